/**
 * Puts a typed letter into its text on the screen and into the document, and has it reported, before the page is laid out. The
 * engine's own way counts all the text of the note before the caret and lays the page out first.
 */
import type { Node } from 'prosemirror-model';
import { Plugin, TextSelection, type Transaction } from 'prosemirror-state';
import type { EditorView } from 'prosemirror-view';
import { takeDomChanges, unobserved } from '../domChanges';

/** A place between two letters of a text on the screen, or behind its last. */
interface Place {
  text: Text;
  offset: number;
}

/** What the view knows of a part of the screen. */
interface Drawn {
  readonly node?: Node;
  readonly contentDOM: HTMLElement | null;
}

/** The plugin that takes letters typed within a text or at the end of its block; all else is the engine's. */
export function typingLetters(): Plugin {
  return new Plugin({ props: { handleDOMEvents: { beforeinput: typeLetter } } });
}

function typeLetter(view: EditorView, event: InputEvent): boolean {
  const { inputType, data, isComposing } = event;
  if (inputType !== 'insertText' || !data || /[\r\n]/.test(data) || isComposing || view.composing) return false;
  takeDomChanges(view);
  const place = placeOf(view);
  if (place === null) return false;
  const { text, offset } = place;
  event.preventDefault();
  const { from } = view.state.selection;
  const insert = (): Transaction => view.state.tr.insertText(data, from, from).scrollIntoView();
  if (view.someProp('handleTextInput', (handle) => handle(view, from, from, data, insert))) return true;
  // The rest of the text keeps what the engine has marked in it, such as misspelt words.
  unobserved(view, () => text.insertData(offset, data));
  view.dispatch(insert());
  return true;
}

/** The text that holds the caret between two of its letters, or at the end of its block. */
function placeOf(view: EditorView): Place | null {
  const { selection, storedMarks } = view.state;
  if (!(selection instanceof TextSelection) || !selection.empty || storedMarks !== null) return null;
  const { focusNode: text, focusOffset: offset, anchorNode, anchorOffset } = getSelection()!;
  if (!(text instanceof Text) || text !== anchorNode || offset !== anchorOffset || offset === 0) return null;
  const isWithin = offset < text.length || (text.nextSibling === null && isContentOfBlock(view, text.parentElement!));
  const isShown = isWithin && drawnAs(view, text)?.node?.isText === true && view.posAtDOM(text, offset) === selection.head;
  return isShown ? { text, offset } : null;
}

function isContentOfBlock(view: EditorView, element: HTMLElement): boolean {
  const drawn = drawnAs(view, element);
  return drawn?.contentDOM === element && drawn.node?.isTextblock === true;
}

function drawnAs(view: EditorView, dom: globalThis.Node): Drawn | undefined {
  return (view as unknown as { docView: { nearestDesc(dom: globalThis.Node): Drawn | undefined } }).docView.nearestDesc(dom);
}
