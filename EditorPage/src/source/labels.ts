import type { Node } from 'prosemirror-model';
import { labelKey } from '../markdown/parse';
import { schema } from '../schema';

const { nodes } = schema;

const definitionLabel = /^\s*\[((?:[^[\]\\]|\\.)+)\]:/s;

const none: readonly string[] = [];
const known = new WeakMap<Node, readonly string[]>();

/** Lines that look like definitions of links and footnotes, also in quotes and lists. Not all of them need be some. */
const definitionForm =
  /^[ \t>*+\-\d.)]*\[(\^[^\]\r\n]+(?=\]:)|(?:[^[\]\\\r\n]|\\.)+(?=\]:[ \t]*(?:(?:<[^>\r\n]*>|[^\s<]\S*)[ \t]*(?:["'(].*)?)?$))/gm;

/** The labels that a text seems to define, and where their lines begin. */
export function* seemingDefinitions(text: string): Generator<{ label: string; at: number }> {
  for (let found = text.indexOf(']:'); found >= 0;) {
    const at = text.lastIndexOf('\n', found) + 1;
    const end = text.indexOf('\n', found);
    const line = text.slice(at, end < 0 ? text.length : end);
    for (const [, label] of line.matchAll(definitionForm)) yield { label: labelKey(label!), at };
    found = end < 0 ? -1 : text.indexOf(']:', end);
  }
}

/** Says which labels are really defined by the blocks that `folded` stands for. */
export function rememberLabels(folded: Node, blocks: readonly Node[]) {
  known.set(folded, blocks.flatMap(labelsOf));
}

/** The labels that a block defines, those of footnotes with a "^" before them; for blocks that are not read, those that they seem to define. */
export function labelsOf(node: Node): readonly string[] {
  let labels = known.get(node);
  if (!labels) {
    const found: string[] = [];
    collect(node, found);
    labels = found.length > 0 ? found : none;
    known.set(node, labels);
  }
  return labels;
}

function collect(node: Node, found: string[]) {
  if (node.type === nodes.folded) {
    for (const { label } of seemingDefinitions(node.attrs.source)) found.push(label);
  } else if (node.type === nodes.definition) {
    const match = definitionLabel.exec(node.textContent);
    if (match) found.push(labelKey(match[1]!));
  } else if (!node.isTextblock && !node.isLeaf) {
    if (node.type === nodes.footnote_definition) found.push(labelKey(`^${node.attrs.label}`));
    for (const child of node.children) collect(child, found);
  }
}

/** All labels of a note, with how often each is defined. */
export type LabelCounts = ReadonlyMap<string, number>;

/** The labels of a note after some blocks have gone and others have come. The same map when that changes none. */
export function countLabels(counts: LabelCounts, gone: readonly Node[], come: readonly Node[]): LabelCounts {
  const lost = gone.flatMap(labelsOf);
  const found = come.flatMap(labelsOf);
  if (lost.length === 0 && found.length === 0) return counts;
  const next = new Map(counts);
  for (const label of found) next.set(label, (next.get(label) ?? 0) + 1);
  for (const label of lost) {
    const count = (next.get(label) ?? 0) - 1;
    if (count > 0) next.set(label, count);
    else next.delete(label);
  }
  return next;
}

/** The labels that only one of two notes defines. */
export function differingLabels(a: LabelCounts, b: LabelCounts): Set<string> {
  if (a === b) return new Set();
  return new Set([...a.keys(), ...b.keys()].filter((label) => a.has(label) !== b.has(label)));
}
