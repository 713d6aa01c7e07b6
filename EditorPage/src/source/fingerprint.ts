import type { Node } from 'prosemirror-model';
import { isFolded, sourceOf } from './folded';

const known = new WeakMap<Node, number>();

function mix(hash: number, value: number): number {
  let mixed = (Math.imul(hash, 0x9e3779b1) + value) | 0;
  mixed ^= mixed >>> 15;
  return Math.imul(mixed, 0x85ebca6b) ^ (mixed >>> 13);
}

function ofText(hash: number, text: string): number {
  let result = mix(hash, text.length);
  for (let index = 0; index < text.length; index += 1) result = (Math.imul(result, 31) + text.charCodeAt(index)) | 0;
  return result;
}

/** Of a long text its ends say enough. */
const endsOf = (text: string) => `${text.length} ${text.slice(0, 40)} ${text.slice(-40)}`;

/** A number that equal nodes share and others hardly ever. */
function ofNode(node: Node): number {
  let hash = known.get(node);
  if (hash !== undefined) return hash;
  hash = ofText(17, node.type.name + (isFolded(node) ? endsOf(sourceOf(node)) : JSON.stringify(node.attrs)));
  for (const mark of node.marks) hash = ofText(hash, mark.type.name + JSON.stringify(mark.attrs));
  if (node.isText) hash = ofText(hash, node.text!);
  node.forEach((child) => (hash = mix(hash!, ofNode(child))));
  known.set(node, hash);
  return hash;
}

/**
 * How the fingerprint of a note changes when `gone` are replaced by `come`. The sum of all changes says whether a note has
 * the blocks that it had before, without a walk over it.
 */
export function fingerprintChange(gone: readonly Node[], come: readonly Node[]): number {
  return (sum(come) - sum(gone)) | 0;
}

function sum(nodes: readonly Node[]): number {
  return nodes.reduce((total, node) => (total + ofNode(node)) | 0, 0);
}
