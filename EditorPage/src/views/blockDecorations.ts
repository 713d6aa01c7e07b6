/** Decorations that depend on one block each, and are made anew only for blocks that change. */
import type { Node } from 'prosemirror-model';
import { Plugin, PluginKey } from 'prosemirror-state';
import { DecorationSet, type Decoration } from 'prosemirror-view';
import { differingRange } from '../source/range';

/** The decorations of the block `node`, which begins at `pos`, and of all that is in it. */
export type Decorate = (node: Node, pos: number) => Decoration[];

/** The children of `parent` from `from` to `to`, which begin at `start` and end at `end`. */
export interface Part {
  parent: Node;
  from: number;
  to: number;
  start: number;
  end: number;
}

/** A plugin that keeps the decorations of every block. */
export function blockDecorations(name: string, decorate: Decorate): Plugin {
  const key = new PluginKey<DecorationSet>(name);
  const build = ({ parent, from, to, start }: Part): Decoration[] => {
    const made: Decoration[] = [];
    let pos = start;
    for (let index = from; index < to; index++) {
      made.push(...decorate(parent.child(index), pos));
      pos += parent.child(index).nodeSize;
    }
    return made;
  };
  return new Plugin<DecorationSet>({
    key,
    state: {
      init: (_config, { doc }) => DecorationSet.create(doc, build(partOf(doc, 0, doc.childCount))),
      apply: (tr, set) => {
        if (!tr.docChanged) return set;
        const part = changedPart(tr.before, tr.doc);
        const mapped = set.map(tr.mapping, tr.doc);
        // Those of the blocks right before and behind touch the run too.
        const old = mapped.find(part.start, part.end).filter(({ from, to }) => from >= part.start && to <= part.end);
        return mapped.remove(old).add(tr.doc, build(part));
      },
    },
    props: { decorations: (state) => key.getState(state) },
  });
}

/** The smallest run of blocks outside of which nothing has changed: of a long list, the item that was edited. */
export function changedPart(before: Node, after: Node): Part {
  const { from, oldTo, nextTo } = differingRange(before, after);
  const part = partOf(after, from, nextTo);
  const [old, inner] = [before.maybeChild(from), after.maybeChild(from)];
  if (oldTo !== from + 1 || nextTo !== from + 1 || !inner!.sameMarkup(old!) || !isTransparent(inner!)) return part;
  const within = changedPart(old!, inner!);
  return { ...within, start: part.start + 1 + within.start, end: part.start + 1 + within.end };
}

function partOf(parent: Node, from: number, to: number): Part {
  let start = 0;
  for (let index = 0; index < from; index++) start += parent.child(index).nodeSize;
  let end = start;
  for (let index = from; index < to; index++) end += parent.child(index).nodeSize;
  return { parent, from, to, start, end };
}

/** Whether how a block looks does not depend on what is in it. What quotes look like does. */
function isTransparent(block: Node): boolean {
  return !block.isTextblock && !block.isLeaf && block.type.name !== 'blockquote';
}
