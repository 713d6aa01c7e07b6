/**
 * What Markdown typed into the note turns into as it is typed. Nothing else is ever replaced: no typographic
 * quotes, no long dashes. Backspace right after a rule gives the typed characters back.
 *
 * A rule sees the text before the caret with the character just typed, which the document does not hold yet:
 * places are counted from the start of the match.
 */
import { InputRule, inputRules } from 'prosemirror-inputrules';
import type { Attrs, MarkType, Node, NodeType } from 'prosemirror-model';
import { TextSelection, type EditorState, type Plugin, type Transaction } from 'prosemirror-state';
import { canJoin, findWrapping } from 'prosemirror-transform';
import { schema } from '../schema';
import { ancestorOf } from './selection';

const { nodes, marks } = schema;

type Apply = (state: EditorState, match: RegExpMatchArray, start: number, end: number) => Transaction | null;

/** A rule for the start of body text that may become another kind of block. Bold or linked characters are no marker. */
function blockRule(pattern: RegExp, apply: Apply): InputRule {
  return new InputRule(pattern, (state, match, start, end) => {
    const $start = state.doc.resolve(start);
    const isStart = $start.parent.type === nodes.paragraph && $start.parentOffset === 0;
    if (!isStart || ($start.nodeAfter?.marks.length ?? 0) > 0) return null;
    return apply(state, match, start, end);
  });
}

/** Whether the text at `start` opens an item that can only begin with body text. */
function opensNarrowItem(state: EditorState, start: number): boolean {
  const $start = state.doc.resolve(start);
  const parent = $start.node(-1);
  return parent.type === nodes.letter_item || (parent.type === nodes.list_item && parent.attrs.checked !== null && $start.index(-1) === 0);
}

/** Turns the block into another kind of text block. */
function textblockRule(pattern: RegExp, type: NodeType, attrs: (match: RegExpMatchArray) => Attrs): InputRule {
  return blockRule(pattern, (state, match, start, end) => {
    if (opensNarrowItem(state, start)) return null;
    const $start = state.doc.resolve(start);
    if (!$start.node(-1).canReplaceWith($start.index(-1), $start.indexAfter(-1), type)) return null;
    if (type === nodes.heading && $start.parent.textContent.includes('\n')) return null;
    return state.tr.delete(start, end).setBlockType(start, start, type, attrs(match));
  });
}

/** Puts the block into a list or quote, and joins that with the one before it when `joins` says so. */
function wrapRule(pattern: RegExp, type: NodeType, attrs: (match: RegExpMatchArray) => Attrs, joins: (before: Node, match: RegExpMatchArray) => boolean): InputRule {
  return blockRule(pattern, (state, match, start, end) => {
    if (opensNarrowItem(state, start)) return null;
    const tr = state.tr.delete(start, end);
    const range = tr.doc.resolve(start).blockRange();
    const wrapping = range && findWrapping(range, type, attrs(match));
    if (!range || !wrapping) return null;
    tr.wrap(range, wrapping);
    const before = tr.doc.resolve(range.start).nodeBefore;
    if (before?.type === type && canJoin(tr.doc, range.start) && joins(before, match)) tr.join(range.start);
    return tr;
  });
}

const headingRule = textblockRule(/^(#{1,6})\s$/, nodes.heading, (match) => ({ level: match[1]!.length }));

const codeRule = textblockRule(/^```([\w+#.-]*)\s$/, nodes.code_block, (match) => ({ lang: match[1] || null }));

const bulletRule = wrapRule(/^[-+*]\s$/, nodes.list, () => ({ kind: 'bullet', start: 1 }), (before) => before.attrs.kind === 'bullet');

const numberRule = wrapRule(
  /^(\d{1,9})[.)]\s$/,
  nodes.list,
  (match) => ({ kind: 'ordered', start: Number(match[1]) }),
  (before, match) => before.attrs.kind === 'ordered' && (before.attrs.start as number) + before.childCount === Number(match[1]),
);

const footnoteRule = wrapRule(/^\[\^([^\]\s]+)\]:\s$/, nodes.footnote_definition, (match) => ({ label: match[1] }), () => false);

const quoteRule = wrapRule(/^>\s$/, nodes.blockquote, () => ({}), () => true);

/** "[ ] " makes a task of a list's item, or of plain text a list with one. */
const taskRule = blockRule(/^\[([ xX]?)\]\s$/, (state, match, start, end) => {
  const checked = /x/i.test(match[1] ?? '');
  const tr = state.tr.delete(start, end);
  const $start = tr.doc.resolve(start);
  const item = ancestorOf($start, (node) => node.type === nodes.list_item);
  if (item !== null && item.depth === $start.depth - 1 && $start.index(item.depth) === 0) {
    return tr.setNodeMarkup($start.before(item.depth), undefined, { checked });
  }
  const range = $start.blockRange();
  const wrapping = range && findWrapping(range, nodes.list, { kind: 'bullet' });
  if (!range || !wrapping) return null;
  return tr.wrap(range, wrapping).setNodeMarkup(range.start + 1, undefined, { checked });
});

/** Three dashes alone in a block draw a rule. Stars and underscores may begin a bold word: they draw one with Enter. */
const lineRule = blockRule(/^---$/, (state, _match, start, end) => {
  const $start = state.doc.resolve(start);
  const isAlone = $start.parent.content.size === end - start;
  const line = [nodes.horizontal_rule.create(), nodes.paragraph.create()];
  if (!isAlone || !$start.node(-1).canReplaceWith($start.index(-1), $start.indexAfter(-1), nodes.horizontal_rule)) return null;
  const before = $start.before();
  const tr = state.tr.replaceWith(before, $start.after(), line);
  return tr.setSelection(TextSelection.near(tr.doc.resolve(before + 1)));
});

/** Sets a mark on what stands between two delimiters when the closing one is typed, and takes the delimiters away. */
function markRule(pattern: RegExp, ...types: MarkType[]): InputRule {
  const apply: Apply = (state, match, start, end) => {
    const [whole, before = '', inner = ''] = match;
    const opening = start + before.length;
    const delimiter = (whole.length - before.length - inner.length) / 2;
    const { parent } = state.doc.resolve(opening);
    if (!types.every((type) => parent.type.allowsMarkType(type))) return null;
    const tr = state.tr.delete(opening + delimiter + inner.length, end).delete(opening, opening + delimiter);
    for (const type of types) tr.addMark(opening, opening + inner.length, type.create());
    for (const type of types) tr.removeStoredMark(type);
    return tr;
  };
  return new InputRule(pattern, apply, { inCodeMark: false });
}

const markRules = [
  markRule(/(^|[^*\\])\*\*\*([^\s*](?:[^*]*[^\s*])?)\*\*\*$/, marks.strong, marks.em),
  markRule(/(^|[^*\\])\*\*([^\s*](?:[^*]*[^\s*])?)\*\*$/, marks.strong),
  markRule(/(^|[^\w\\])__([^\s_](?:[^_]*[^\s_])?)__$/, marks.strong),
  markRule(/(^|[^*\\])\*([^\s*](?:[^*]*[^\s*])?)\*$/, marks.em),
  markRule(/(^|[^\w\\])_([^\s_](?:[^_]*[^\s_])?)_$/, marks.em),
  markRule(/(^|[^=\\])==([^\s=](?:[^=]*[^\s=])?)==$/, marks.highlight),
  markRule(/(^|[^~\\])~~([^\s~](?:[^~]*[^\s~])?)~~$/, marks.strike),
  markRule(/(^|[^`\\])`([^`\s](?:[^`]*[^`\s])?)`$/, marks.code),
];

const applyLink: Apply = (state, match, start, end) => {
  const [, before = '', inner = '', href = ''] = match;
  const from = start + before.length;
  if (!state.doc.resolve(from).parent.type.allowsMarkType(marks.link)) return null;
  const tr = state.tr.delete(from + 1 + inner.length, end).delete(from, from + 1);
  return tr.addMark(from, from + inner.length, marks.link.create({ href })).removeStoredMark(marks.link);
};

const applyWikilink: Apply = (state, match, start, end) => {
  const [, before = '', bang = '', target = '', alias = null] = match;
  const type = bang === '' ? nodes.wikilink : nodes.embed;
  return state.tr.replaceWith(start + before.length, end, type.create({ target, alias }));
};

const applyPicture: Apply = (state, match, start, end) => {
  const [, before = '', alt = '', src = ''] = match;
  return state.tr.replaceWith(start + before.length, end, nodes.image.create({ src, alt }));
};

/** A note is referred to where there is one of that name; one that is written later finds the text by itself. */
const applyReference: Apply = (state, match, start, end) => {
  const label = match[1]!;
  const isDefined = state.doc.children.some((block) => block.type === nodes.footnote_definition && block.attrs.label === label);
  return isDefined ? state.tr.replaceWith(start, end, nodes.footnote_reference.create({ label })) : null;
};

/** A formula reads like one: sums of money between dollars are none. */
const applyFormula: Apply = (state, match, start, end) => {
  const [, before = '', value = ''] = match;
  const isFormula = /[\\^_={}+]/.test(value) || /^\p{L}\S{0,2}$/u.test(value);
  return isFormula ? state.tr.replaceWith(start + before.length, end, nodes.math_inline.create({ value })) : null;
};

/** `[text](address)`, `![text](address)`, `[[Name]]`, `![[Picture]]`, `[^1]` and `$x^2$` become what they say when their last character is typed. */
const linkRules = [
  new InputRule(/(^|[^\\])!\[([^[\]]*)\]\(([^()\s]+)\)$/, applyPicture, { inCodeMark: false }),
  new InputRule(/\[\^([^\]\s[]+)\]$/, applyReference, { inCodeMark: false }),
  new InputRule(/(^|[^$\\\p{L}\p{N}])\$([^\s$\ufffc](?:[^$\ufffc]*[^\s$\ufffc\\])?)\$$/u, applyFormula, { inCodeMark: false }),
  new InputRule(/(^|[^!\\[])\[([^[\]]+)\]\(([^()\s]+)\)$/, applyLink, { inCodeMark: false }),
  new InputRule(/(^|[^[\\!])(!?)\[\[([^[\]|\n]+)(?:\|([^[\]|\n]+))?\]\]$/, applyWikilink, { inCodeMark: false }),
];

/** The plugin that watches what is typed. */
export function typingRules(): Plugin {
  const blocks = [headingRule, bulletRule, numberRule, taskRule, quoteRule, footnoteRule, codeRule, lineRule];
  return inputRules({ rules: [...blocks, ...markRules, ...linkRules] });
}
