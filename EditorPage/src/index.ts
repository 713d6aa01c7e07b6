/** Starts the editor page. */
import { connect } from './bridge';
import { NoteEditor } from './editor';
import { Page } from './page';
import { keepRoomBelow } from './roomBelow';
import { warmUp } from './warmUp';

const root = document.getElementById('editor');
if (root === null) throw new Error('the page has no place for the editor');
connect(new Page(new NoteEditor(root), document.body));
keepRoomBelow(root);
warmUp();

// A file dropped where the note does not take it would otherwise replace the page.
for (const kind of ['dragover', 'drop']) {
  window.addEventListener(kind, (event) => {
    if ((event as DragEvent).dataTransfer?.types.includes('Files')) event.preventDefault();
  });
}
