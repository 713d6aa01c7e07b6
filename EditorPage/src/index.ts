/** Starts the editor page. */
import { connect } from './bridge';
import { NoteEditor } from './editor';

const root = document.getElementById('editor');
if (root === null) throw new Error('the page has no place for the editor');
connect(new NoteEditor(root));
