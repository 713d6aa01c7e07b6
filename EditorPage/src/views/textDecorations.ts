/** Light styles for text that means something: callouts, comments, tags and block names. */
import type { Node } from 'prosemirror-model';
import type { Plugin } from 'prosemirror-state';
import { Decoration } from 'prosemirror-view';
import { schema } from '../schema';
import { calloutOf, type Callout } from '../syntax/callout';
import { blockDecorations } from './blockDecorations';
import { decorateInlineHtml } from './inlineHtml';

/** What a kind of callout is called, and its tone. */
const CALLOUTS: Readonly<Record<string, readonly [label: string, tone: string]>> = {
  note: ['Notering', 'plain'],
  info: ['Information', 'plain'],
  abstract: ['Sammanfattning', 'plain'],
  summary: ['Sammanfattning', 'plain'],
  todo: ['Att göra', 'plain'],
  question: ['Fråga', 'plain'],
  example: ['Exempel', 'plain'],
  quote: ['Citat', 'plain'],
  tip: ['Tips', 'good'],
  hint: ['Tips', 'good'],
  success: ['Klart', 'good'],
  important: ['Viktigt', 'warn'],
  warning: ['Varning', 'warn'],
  caution: ['Var försiktig', 'warn'],
  attention: ['Obs', 'warn'],
  danger: ['Fara', 'danger'],
  error: ['Fel', 'danger'],
  bug: ['Fel', 'danger'],
  failure: ['Misslyckat', 'danger'],
};

const TEXT_STYLES: readonly (readonly [RegExp, string])[] = [
  [/%%[^%\n]+%%/g, 'comment'],
  [/(?<![\p{L}\p{N}_/&#])#(?=[\p{L}\p{N}_/-]*\p{L})[\p{L}\p{N}_/-]+/gu, 'tag'],
  [/(?<=\s)\^[A-Za-z0-9-]+$/g, 'block-name'],
];

/** The plugin that keeps the light styles. */
export function textDecorations(): Plugin {
  return blockDecorations('textDecorations', (block, pos) => {
    const made: Decoration[] = [];
    if (decorateNode(block, pos, made)) block.descendants((node, offset) => decorateNode(node, pos + 1 + offset, made));
    return made;
  });
}

/** Adds the styles of one node; tells whether those inside it are to be visited. */
function decorateNode(node: Node, pos: number, made: Decoration[]): boolean {
  if (node.isText) decorateText(node, pos, made);
  else if (node.isTextblock) decorateInlineHtml(node, pos, made);
  const callout = calloutOf(node);
  if (callout !== null) decorateCallout(node, pos, callout, made);
  return !node.type.spec.code;
}

function decorateText(node: Node, pos: number, made: Decoration[]): void {
  const text = node.text ?? '';
  if (schema.marks.code.isInSet(node.marks) || !/[#%^]/.test(text)) return;
  for (const [pattern, className] of TEXT_STYLES) {
    for (const match of text.matchAll(pattern)) {
      made.push(Decoration.inline(pos + match.index!, pos + match.index! + match[0].length, { class: className }));
    }
  }
}

function decorateCallout(node: Node, pos: number, callout: Callout, made: Decoration[]): void {
  const [label, tone] = CALLOUTS[callout.kind] ?? [callout.kind, 'plain'];
  const text = pos + 2;
  const words = node.firstChild?.firstChild?.text ?? '';
  const firstLine = words.split('\n', 1)[0] ?? '';
  const hasTitle = firstLine.length > callout.markerLength;
  // The line end after a marker that stands alone goes with it.
  const marker = hasTitle || words === firstLine ? callout.markerLength : firstLine.length + 1;
  made.push(Decoration.node(pos, pos + node.nodeSize, { class: 'callout', 'data-tone': tone, ...(hasTitle ? {} : { 'data-title': label }) }));
  made.push(Decoration.inline(text, text + marker, { class: 'callout-marker' }));
  if (hasTitle) made.push(Decoration.inline(text + callout.markerLength, text + firstLine.length, { class: 'callout-title' }));
}
