import type { Node } from 'prosemirror-model';
import type { Correction } from './update';

/** Remembers which blocks stand for the same bytes as others, so that those that come back can be told what they are now. */
export class Exchanged {
  /** By the first of the blocks that are gone. */
  private readonly known = new WeakMap<Node, { gone: readonly Node[]; come: readonly Node[] }>();

  /** `come` stand in every state where `gone` stood until now. */
  record(gone: readonly Node[], come: readonly Node[]) {
    for (const node of come) this.known.delete(node);
    if (come[0] !== gone[0]) this.known.set(gone[0]!, { gone, come });
  }

  /** What has to take the place of the blocks from `from` to `to` that were exchanged. */
  since(blocks: readonly Node[], from: number, to: number): Correction[] {
    const corrections: Correction[] = [];
    for (let index = from; index < to; index += 1) {
      const size = this.sizeAt(blocks, index);
      if (size === 0) continue;
      corrections.push({ from: index, to: index + size, nodes: this.now(blocks.slice(index, index + size)) });
      index += size - 1;
    }
    return corrections;
  }

  private sizeAt(blocks: readonly Node[], index: number): number {
    const found = this.known.get(blocks[index]!);
    return found?.gone.every((node, place) => blocks[index + place] === node) ? found.gone.length : 0;
  }

  private now(blocks: readonly Node[]): Node[] {
    const result: Node[] = [];
    for (let index = 0; index < blocks.length; index += 1) {
      const size = this.sizeAt(blocks, index);
      if (size === 0) result.push(blocks[index]!);
      else result.push(...this.now(this.known.get(blocks[index]!)!.come));
      index += Math.max(0, size - 1);
    }
    return result;
  }
}
