/**
 * CodeMirror 6 as a plain Markdown editor, behind the same script object and messages as our own editor page, so that one
 * driver measures both.
 */
import { defaultKeymap, history, historyKeymap } from '@codemirror/commands';
import { markdown, markdownLanguage } from '@codemirror/lang-markdown';
import { defaultHighlightStyle, syntaxHighlighting } from '@codemirror/language';
import { EditorState } from '@codemirror/state';
import { EditorView, keymap } from '@codemirror/view';

const post = (name, body) => window.webkit?.messageHandlers?.[name]?.postMessage(body);

// The same column and text size as our own page has, so that both lay out as much text.
const looks = EditorView.theme({
  '&': { height: '100%' },
  '.cm-scroller': { font: '16px/1.6 system-ui, Inter, sans-serif' },
  '.cm-content': { boxSizing: 'border-box', maxWidth: '46em', margin: '0 auto', padding: '44px 24px' },
});

const extensions = [
  looks,
  history(),
  keymap.of([...defaultKeymap, ...historyKeymap]),
  EditorView.lineWrapping,
  markdown({ base: markdownLanguage }),
  syntaxHighlighting(defaultHighlightStyle),
  EditorView.updateListener.of((update) => {
    if (update.docChanged) post('changed', update.state.doc.toString());
  }),
];
const stateOf = (text) => EditorState.create({ doc: text, extensions });
const view = new EditorView({ state: stateOf(''), parent: document.getElementById('editor') });

window.VaultEditor = {
  setContent: (text) => view.setState(stateOf(text)),
  focus: () => view.focus(),
  setTheme: () => {},
  exec: () => {},
};
post('ready', {});
