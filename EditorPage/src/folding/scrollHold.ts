/** Keeps what the window shows in its place while blocks above it change their height. */
import type { EditorView } from 'prosemirror-view';

/**
 * Carries out `change` and brings back to its place what the window shows. When it shows nothing that is drawn, `target`
 * tells after the change what should be at its upper edge.
 */
export function hold(view: EditorView, change: () => boolean, target: () => number): boolean {
  const anchor = anchorIn(view);
  const before = anchor?.getBoundingClientRect().top ?? 0;
  if (!change()) return false;
  const moved = anchor === null ? target() : anchor.getBoundingClientRect().top - before;
  if (Math.abs(moved) >= 1) window.scrollBy(0, moved);
  return true;
}

/** A drawn block that the window shows. Asking what is at a point would have everything made ready to be painted. */
function anchorIn(view: EditorView): Element | null {
  const blocks = blocksIn(view);
  for (let index = firstBelow(blocks, 0); index < blocks.length; index++) {
    if (blocks[index]!.getBoundingClientRect().top > innerHeight) return null;
    if (!blocks[index]!.classList.contains('folded')) return blocks[index]!;
  }
  return null;
}

/** The elements of the document's top-level blocks, in order. */
export function blocksIn(view: EditorView): Element[] {
  return [...view.dom.children].filter((element) => !element.classList.contains('ProseMirror-widget'));
}

/** The index of the first of the blocks whose lower edge is below `y`. */
function firstBelow(blocks: readonly Element[], y: number): number {
  let low = 0;
  for (let high = blocks.length; low < high; ) {
    const middle = (low + high) >> 1;
    if (blocks[middle]!.getBoundingClientRect().bottom > y) high = middle;
    else low = middle + 1;
  }
  return low;
}
