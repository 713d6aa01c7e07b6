import type { Node } from 'prosemirror-model';
import { isFolded, sourceOf } from './folded';
import { differing } from './range';

const known = new WeakMap<Node, number>();

function mix(hash: number, value: number): number {
  let mixed = (Math.imul(hash, 0x9e3779b1) + value) | 0;
  mixed ^= mixed >>> 15;
  return Math.imul(mixed, 0x85ebca6b) ^ (mixed >>> 13);
}

/** So many letters of a text are looked at. */
const LETTERS = 64;

function ofText(hash: number, text: string): number {
  let result = mix(hash, text.length);
  const step = Math.ceil(text.length / LETTERS) || 1;
  for (let index = 0; index < text.length; index += step) result = (Math.imul(result, 31) + text.charCodeAt(index)) | 0;
  return result;
}

/** Of a long text its ends say enough. */
const endsOf = (text: string) => `${text.length} ${text.slice(0, 40)} ${text.slice(-40)}`;

/** A number that equal nodes share and others hardly ever. Of what `like` shares with the node nothing is looked at again. */
function ofNode(node: Node, like?: Node): number {
  let hash = known.get(node);
  if (hash !== undefined) return hash;
  const shared = like && known.get(like);
  if (shared !== undefined && !node.isLeaf && like!.sameMarkup(node)) hash = (shared + childrenChange(like!, node)) | 0;
  else hash = (ofMarkup(node) + node.children.reduce((total, child) => (total + ofChild(child)) | 0, 0)) | 0;
  known.set(node, hash);
  return hash;
}

function ofMarkup(node: Node): number {
  let hash = node.isText ? 19 : ofText(17, node.type.name + (isFolded(node) ? endsOf(sourceOf(node)) : JSON.stringify(node.attrs)));
  for (const mark of node.marks) hash = ofText(hash, mark.type.name + JSON.stringify(mark.attrs));
  return node.isText ? ofText(hash, node.text!) : hash;
}

/** What a child adds to the number of its parent, wherever it stands. */
const ofChild = (child: Node, like?: Node) => mix(29, ofNode(child, like));

function childrenChange(before: Node, after: Node): number {
  const { from, oldTo, nextTo } = differing(before.children, after.children);
  let change = 0;
  for (let index = from; index < nextTo; index += 1) change = (change + ofChild(after.child(index), before.maybeChild(index) ?? undefined)) | 0;
  for (let index = from; index < oldTo; index += 1) change = (change - ofChild(before.child(index))) | 0;
  return change;
}

/**
 * How the fingerprint of a note changes when `gone` are replaced by `come`. The sum of all changes says whether a note has
 * the blocks that it had before, without a walk over it.
 */
export function fingerprintChange(gone: readonly Node[], come: readonly Node[]): number {
  const sum = (nodes: readonly Node[], likes: readonly Node[]) => nodes.reduce((total, node, index) => (total + ofNode(node, likes[index])) | 0, 0);
  const before = sum(gone, []);
  return (sum(come, gone) - before) | 0;
}
