import type { Node } from 'prosemirror-model';
import { labelKey } from '../markdown/parse';
import { schema } from '../schema';

const { nodes } = schema;

const definitionLabel = /^\s*\[((?:[^[\]\\]|\\.)+)\]:/s;

const none: readonly string[] = [];
const known = new WeakMap<Node, readonly string[]>();

/** The labels that a block defines, those of footnotes with a "^" before them. */
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
  if (node.type === nodes.definition) {
    const match = definitionLabel.exec(node.textContent);
    if (match) found.push(labelKey(match[1]!));
  } else if (!node.isTextblock && !node.isLeaf) {
    if (node.type === nodes.footnote_definition) found.push(labelKey(`^${node.attrs.label}`));
    node.forEach((child) => found.push(...labelsOf(child)));
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
