/** The editor of one note: ties the document on the screen to the note's text, and both to the host. */
import { closeHistory, isHistoryTransaction } from 'prosemirror-history';
import type { Node } from 'prosemirror-model';
import { EditorState, type Plugin, type Transaction } from 'prosemirror-state';
import { EditorView } from 'prosemirror-view';
import { ChangeReporter } from './bridge';
import { clipboardProps, copyAsText } from './clipboard/index';
import { pastedAtEnd, standsAlone } from './clipboard/longPaste';
import { commandFor } from './commands/exec';
import { correct } from './corrections';
import { takeDomChanges } from './domChanges';
import { FROM_TEXT, Folding, type Folded } from './folding/folding';
import { isToEnd, needsWholeSelection } from './folding/input';
import { markdownOf } from './markdown/write';
import { editorPlugins } from './plugins';
import { isSameNote } from './similarity';
import { isFolded } from './source/folded';
import { differingRange, type Range } from './source/range';
import { SourceDocument, type Applied, type Correction } from './source/SourceDocument';
import type { TextChange } from './source/noteText';
import { unify } from './source/text';
import { changeBetween } from './source/update';
import { foldedAt, offsetOf, placeAt } from './sourceView/offsets';
import { ShownText } from './sourceView/shownText';
import { TextStep } from './sourceView/textStep';
import type { NoteContext } from './views/context';
import { markViews, nodeViews } from './views';
import { firstPlace, lastPlace } from './views/drawn';
import { isTooLong, showTooLong } from './views/tooLong';

/** Of a longer note so much is read at first; in characters. The rest is folded. */
const FIRST_PART = 1_000;

/** What may act on what stands beside the caret, so that it has to be there. */
const ACTS_AT_CARET = ['keydown', 'beforeinput', 'copy', 'cut', 'paste', 'drop', 'dragstart'] as const;

export class NoteEditor implements Folded {
  #folding = new Folding(this);
  readonly view: EditorView;
  #source = SourceDocument.load('');
  #reporter = new ChangeReporter();
  #plugins: Plugin[];
  #reportDue = false;
  #lastEdit: Transaction | null = null;
  /** Changes of the source that were undone or redone and not yet taken over. */
  #textSteps: TextStep[] = [];
  /** Whether the next edit is what the user is typing right now. */
  #isTyping = false;
  /** A note that is too long to be shown. Nothing of it can be edited. */
  #unshown: string | null = null;
  #placed = true;

  constructor(private root: HTMLElement) {
    const context: NoteContext = {
      definitionFor: (label) => this.#source.definitionFor(label),
      peek: (part) => this.#source.peek(part),
    };
    this.#plugins = editorPlugins(context);
    this.view = new EditorView(root, {
      state: this.#freshState(),
      nodeViews: nodeViews(context, this.#folding),
      markViews,
      editable: () => this.#unshown === null,
      attributes: {
        role: 'textbox',
        'aria-multiline': 'true',
        'aria-label': 'Anteckning',
        spellcheck: 'true',
        lang: 'sv',
        autocorrect: 'off',
        translate: 'no',
      },
      handleDOMEvents: {
        compositionend: () => (this.#scheduleReport(), false),
        paste: (_, event) => this.#pasteLong(event),
      },
      dispatchTransaction: (tr) => this.#dispatch(tr),
      ...clipboardProps(() => this.#source),
    });
    for (const kind of ACTS_AT_CARET) root.addEventListener(kind, (event) => this.#expectInput(event), true);
  }

  /**
   * Shows `text`. The text that is shown already changes nothing. A newer state of the same note keeps the
   * caret, the place on the screen and what can be undone; another note starts afresh at its top.
   */
  setContent(text: string): void {
    this.#report();
    this.#reporter.restart();
    const before = this.#source.text;
    if (text === (this.#unshown ?? before)) return;
    this.#unshown = isTooLong(text) ? text : null;
    showTooLong(this.root, this.#unshown);
    if (this.#unshown !== null) this.#open('');
    else if (isSameNote(before, text)) this.#reload(text);
    else this.#open(text);
  }

  reportWhole(): void {
    this.#report();
    this.#reporter.tellWhole(this.#unshown ?? this.#source.text);
  }

  /** Runs one of the toolbar's commands as one step that can be undone; unknown ones do nothing. */
  exec(command: string, value?: string | number): void {
    const run = commandFor(command, value);
    if (run === null || this.#unshown !== null) return;
    const stepsAlone = command !== 'undo' && command !== 'redo';
    this.#prepare(stepsAlone);
    run(this.view.state, (tr) => this.view.dispatch(stepsAlone ? closeHistory(tr) : tr), this.view);
    this.#report();
    if (stepsAlone) this.view.dispatch(closeHistory(this.view.state.tr));
  }

  /** Puts a text in at the caret letter by letter, as one step. */
  pasteText(text: string): void {
    if (this.#unshown !== null) return;
    this.#prepare(true);
    this.view.dispatch(closeHistory(this.view.state.tr));
    this.view.pasteText(text);
    this.#report();
    this.view.dispatch(closeHistory(this.view.state.tr));
  }

  /** Has everything there that a change from the host may work on. */
  #prepare(takesSelection: boolean): void {
    this.#isTyping = false;
    if (takesSelection) this.#folding.unfoldSelection();
    this.#folding.unfoldBesideSelection();
    this.#report();
    this.view.focus();
  }

  setTheme(theme: string): void {
    document.documentElement.dataset['theme'] = theme === 'dark' ? 'dark' : 'light';
  }

  /** Takes the keyboard; in a note where no caret was set yet it goes to the end. */
  focus(): void {
    const isPlaced = this.#placed;
    if (!isPlaced) {
      this.#folding.unfoldEnd();
      const { state } = this.view;
      this.view.dispatch(state.tr.setSelection(lastPlace(state.doc)));
    }
    this.view.focus();
    // Without the focus there is no place in the page to bring into view.
    if (!isPlaced) this.view.dispatch(this.view.state.tr.scrollIntoView());
  }

  /** Takes the keyboard and leaves the note as it is shown: a caret that was not set yet goes to the end only if that is in view. */
  focusInView(): void {
    const { state } = this.view;
    const end = lastPlace(state.doc);
    const isDrawn = state.doc.lastChild !== null && !isFolded(state.doc.lastChild);
    if (!this.#placed && isDrawn && this.view.coordsAtPos(end.head).bottom <= innerHeight)
      this.view.dispatch(state.tr.setSelection(end));
    this.view.focus();
  }

  /** Brings the document to what `change` says of the same text. False when it cannot be changed now. */
  refold(change: (source: SourceDocument) => readonly Correction[]): boolean {
    if (this.view.composing) return false;
    takeDomChanges(this.view);
    this.#report();
    if (!isEmpty(differingRange(this.#source.doc, this.view.state.doc))) return false;
    const corrections = change(this.#source);
    if (corrections.length > 0) this.#show(corrections);
    return corrections.length > 0;
  }

  /** Unfolds of a run what holds the character at `offset`. */
  unfold(folded: Node, offset: number): void {
    this.#folding.unfoldAt(folded, offset);
  }

  /** The whole note, byte for byte. */
  get text(): string {
    this.#report();
    return this.#unshown ?? this.#source.text;
  }

  /** Tells the host what was changed in the source, one change after the other. The document follows with `rewrite`. */
  tell(changes: readonly TextChange[], note: { readonly text: string; readonly length: number }): void {
    if (changes.length === 1) this.#reporter.tell(changes[0]!, note);
    else if (changes.length > 1) this.#reporter.tellWhole(note.text);
  }

  /** Makes `text` of the note, as one step that can be undone. The host is taken to know it already. */
  rewrite(text: string): void {
    if (this.#unshown !== null) return;
    const before = this.text;
    if (this.#unshown !== null) return this.setContent(text);
    const change = changeBetween(before, text);
    if (change === null) return;
    const tr = correct(closeHistory(this.view.state.tr), this.#source.reload(text)!);
    tr.step(new TextStep(change.from, before.slice(change.from, change.to), change.insert));
    this.view.dispatch(tr.setMeta(FROM_TEXT, true));
    this.view.dispatch(closeHistory(this.view.state.tr));
  }

  /** Pastes long Markdown that stands alone; false for everything else. */
  #pasteLong(event: ClipboardEvent): boolean {
    const { types = [] } = event.clipboardData ?? {};
    const pasted = types.includes('text/html') ? '' : unify(event.clipboardData?.getData('text/plain') ?? '').text;
    if (this.#unshown !== null || isPlainPaste(this.view) || !standsAlone(pasted, this.view.state)) return false;
    const note = new ShownText(this.text);
    const change = pastedAtEnd(note.shown, this.caret, pasted);
    if (change === null || isTooLong(note.shown + change.insert)) return false;
    const shown = note.shown.slice(0, change.from) + change.insert;
    this.tell(note.edit([change], () => shown), note);
    this.rewrite(note.text);
    this.caret = shown.length;
    this.showCaret();
    event.preventDefault();
    return true;
  }

  /** The caret's place in the source, with line ends of one character and no byte order mark. */
  get caret(): number {
    this.#report();
    return offsetOf(this.#source.blocks, this.view.state.selection.head);
  }

  set caret(offset: number) {
    this.#report();
    const folded = foldedAt(this.#source.blocks, offset);
    if (folded !== null) this.#folding.unfoldAt(folded.node, folded.offset);
    const { tr } = this.view.state;
    this.view.dispatch(tr.setSelection(placeAt(tr.doc, this.#source.blocks, offset)));
  }

  /** Brings the caret into sight. */
  showCaret(): void {
    const { top, bottom } = this.view.coordsAtPos(this.view.state.selection.head);
    if (top < 0 || bottom > innerHeight) window.scrollBy(0, (top + bottom - innerHeight) / 2);
  }

  /** Hides the note while something else stands in its place. */
  set isHidden(isHidden: boolean) {
    this.view.dom.parentElement!.hidden = isHidden;
  }

  #freshState(): EditorState {
    const { doc } = this.#source;
    return EditorState.create({ doc, selection: firstPlace(doc), plugins: this.#plugins });
  }

  #open(text: string): void {
    this.#source = SourceDocument.load(text, FIRST_PART);
    this.#lastEdit = null;
    this.view.updateState(this.#freshState());
    this.#placed = false;
    window.scrollTo(0, 0);
  }

  #expectInput(event: Event): void {
    this.#isTyping = event.type === 'beforeinput';
    if (event instanceof KeyboardEvent && isToEnd(event)) this.#folding.unfoldEnd();
    const folded = this.#folding.foldedInSelection;
    if (needsWholeSelection(event, folded)) this.#folding.unfoldSelection();
    else if (event instanceof ClipboardEvent && event.type !== 'paste' && folded > 0) copyAsText(event, this.view, this.#source);
    this.#folding.unfoldBesideSelection();
  }

  #reload(text: string): void {
    const isInStep = isEmpty(differingRange(this.#source.doc, this.view.state.doc));
    const change = isInStep ? this.#source.reload(text) : null;
    if (change === null) {
      this.#open(text);
      return;
    }
    this.#show(change);
  }

  /** Brings the document to what the text says; nothing to be undone. */
  #show(corrections: readonly Correction[]): void {
    const tr = correct(this.view.state.tr, corrections);
    this.view.dispatch(tr.setMeta(FROM_TEXT, true).setMeta('addToHistory', false));
  }

  #dispatch(tr: Transaction): void {
    if (tr.docChanged && this.#unshown !== null) return;
    const next = this.view.state.apply(tr);
    const isEdit = tr.docChanged && tr.getMeta(FROM_TEXT) !== true;
    if (tr.selectionSet) this.#placed = true;
    if (tr.docChanged && tr.getMeta('addToHistory') !== false) this.#folding.keep(tr);
    if (isEdit) {
      for (const step of tr.steps) if (step instanceof TextStep) this.#textSteps.push(step);
      this.#lastEdit = tr;
    }
    const isReported = isEdit && this.#isTyping && this.#reportTyped(next.doc);
    this.view.updateState(next);
    if (isEdit && !isReported) this.#scheduleReport();
  }

  /** Reports what was typed before it is drawn. False when there is more to be done once it is. */
  #reportTyped(doc: Node): boolean {
    this.#isTyping = false;
    if (this.#reportDue) return false;
    return this.#tell(doc).length === 0;
  }

  /** Reports at the end of the running task, however many edits it makes. */
  #scheduleReport(): void {
    if (this.#reportDue) return;
    this.#reportDue = true;
    queueMicrotask(() => this.#report());
  }

  #report(): void {
    if (!this.#reportDue) return;
    this.#reportDue = false;
    const corrections = this.#tell(this.view.state.doc);
    // A correction would break an input method's composition; the same one comes again when it has ended.
    if (corrections.length > 0 && !this.view.composing) this.#correct(corrections);
  }

  /** Tells the host what the note is with the document `doc`, and gives what the document has to become. */
  #tell(doc: Node): readonly Correction[] {
    const isRewritten = this.#takeTextSteps();
    const { change, corrections } = this.#apply(doc);
    if (isRewritten) this.#reporter.tellWhole(this.#source.text);
    else if (change !== null) this.#reporter.tell(change, this.#source);
    return corrections;
  }

  /** Undoes or redoes what was changed in the source. What the document shows comes in step right after. */
  #takeTextSteps(): boolean {
    if (this.#textSteps.length === 0) return false;
    const before = this.#source.text;
    for (const step of this.#textSteps.splice(0)) {
      const text = step.changed(this.#source.text);
      if (text !== null) this.#source.reload(text);
    }
    return this.#source.text !== before;
  }

  /** Brings the text in step. Should that ever fail, the note is written anew: its words go before its bytes. */
  #apply(doc: Node): Applied {
    try {
      return this.#source.apply(doc);
    } catch (error) {
      console.error(error);
      const before = this.#source.text;
      this.#source = SourceDocument.load(markdownOf(doc.children));
      const insert = this.#source.text;
      return { change: insert === before ? null : { from: 0, to: before.length, insert }, corrections: [] };
    }
  }

  #correct(corrections: readonly Correction[]): void {
    const tr = correct(this.view.state.tr, corrections);
    tr.setMeta(FROM_TEXT, true);
    // Undone together with the edit that called for it. What the history itself has brought about is no edit.
    if (this.#lastEdit === null || isHistoryTransaction(this.#lastEdit)) tr.setMeta('addToHistory', false);
    else tr.setMeta('appendedTransaction', this.#lastEdit);
    this.view.dispatch(tr);
  }
}

const isEmpty = ({ from, oldTo, nextTo }: Range): boolean => from === oldTo && from === nextTo;

/** Whether the keys held say that a paste is to be taken letter by letter. */
function isPlainPaste(view: EditorView): boolean {
  return (view as unknown as { input: { shiftKey: boolean } }).input.shiftKey;
}
