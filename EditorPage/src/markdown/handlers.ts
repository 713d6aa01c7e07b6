import type { Literal, Node as TreeNode, Paragraph, PhrasingContent } from 'mdast';
import { defaultHandlers, type Handle, type Options } from 'mdast-util-to-markdown';
import { letterLabel } from '../syntax/letters';

/** Plain lines that begin with letters. */
export interface LetterList extends TreeNode {
  type: 'letterList';
  start: number;
  children: Paragraph[];
}

/** A block whose source is known: it is not HTML, which would need room around it. */
export interface Verbatim extends Literal {
  type: 'verbatim';
}

/** Part of a text block's content, to be written between the characters `before` and `after`. */
export interface Stretch extends TreeNode {
  type: 'stretch';
  before: string;
  after: string;
  isCell: boolean;
  children: PhrasingContent[];
}

declare module 'mdast' {
  interface RootContentMap {
    letterList: LetterList;
    stretch: Stretch;
    verbatim: Verbatim;
  }
}

const writeLetterList: Handle = (node: LetterList, _parent, state, info) => {
  const lines = node.children.map((item, index) => {
    const marker = `${letterLabel(node.start + index)}. `;
    const exit = state.enter('paragraph');
    const exitPhrasing = state.enter('phrasing');
    const text = state.containerPhrasing(item, { ...info, before: ' ', after: '\n' });
    exitPhrasing();
    exit();
    return (marker + text).trimEnd();
  });
  return lines.join('\n');
};

const writeStretch: Handle = (node: Stretch, _parent, state, info) => {
  const exits = [state.enter('paragraph'), state.enter('phrasing')];
  if (node.isCell) exits.push(state.enter('tableCell'));
  const text = state.containerPhrasing(node as never, { ...info, before: node.before, after: node.after });
  for (const exit of exits.reverse()) exit();
  return text;
};

const writeVerbatim: Handle = (node: Verbatim) => node.value;

/** A backslash before "&" that begins no character reference. */
const NEEDLESS = /(?<!\\)((?:\\\\)*)\\&(?!(?:[a-z][a-z\d]*|#\d+|#x[\da-f]+);)/gi;

/** What `write` gives, with "&" as it is where it means itself. */
const withPlainAmpersands = (write: Handle): Handle => {
  const handle: Handle = (...given) => write(...given).replace(NEEDLESS, '$1&');
  return Object.assign(handle, write);
};

export const ownHandlers: Options = {
  handlers: { link: withPlainAmpersands(defaultHandlers.link), text: withPlainAmpersands(defaultHandlers.text), letterList: writeLetterList, stretch: writeStretch, verbatim: writeVerbatim } as Options['handlers'],
  unsafe: [{ atBreak: true, before: '[A-Z]', character: '.', after: '[ \\t]' }],
};
