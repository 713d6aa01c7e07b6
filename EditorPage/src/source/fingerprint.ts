import type { Node } from 'prosemirror-model';

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

/** A number that equal nodes share and others hardly ever. */
function ofNode(node: Node): number {
  let hash = known.get(node);
  if (hash !== undefined) return hash;
  hash = ofText(17, node.type.name + JSON.stringify(node.attrs));
  for (const mark of node.marks) hash = ofText(hash, mark.type.name + JSON.stringify(mark.attrs));
  if (node.isText) hash = ofText(hash, node.text!);
  node.forEach((child) => (hash = mix(hash!, ofNode(child))));
  known.set(node, hash);
  return hash;
}

/**
 * How the fingerprint of a sequence of blocks changes when `gone` are replaced by `come` between the given
 * neighbours. The sum of all changes says whether a sequence is one that there was before, without a walk over it.
 */
export function fingerprintChange(
  before: Node | undefined,
  gone: readonly Node[],
  come: readonly Node[],
  after: Node | undefined,
): number {
  return (sumOfPairs(before, come, after) - sumOfPairs(before, gone, after)) | 0;
}

/** Neighbours count together, so that the order of the blocks counts. */
function sumOfPairs(before: Node | undefined, nodes: readonly Node[], after: Node | undefined): number {
  let sum = 0;
  let left = before ? ofNode(before) : 1;
  for (const node of nodes) {
    const right = ofNode(node);
    sum = (sum + mix(left, right)) | 0;
    left = right;
  }
  return (sum + mix(left, after ? ofNode(after) : 2)) | 0;
}
