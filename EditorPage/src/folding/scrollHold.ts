/** Keeps what the window shows in its place while blocks above it change their height. */
import type { EditorView } from 'prosemirror-view';

/** Where in the window something to hold on to is looked for, in shares of its height. */
const PLACES = [0.02, 0.1, 0.3, 0.5, 0.7, 0.9];

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

/** A drawn block that the window shows. */
function anchorIn(view: EditorView): Element | null {
  const { left, width } = view.dom.getBoundingClientRect();
  for (const place of PLACES) {
    const found = document.elementFromPoint(left + width / 2, innerHeight * place);
    const block = blockAround(view, found);
    if (block !== null && !block.classList.contains('folded')) return block;
  }
  return null;
}

function blockAround(view: EditorView, element: Element | null): Element | null {
  let block = element;
  while (block !== null && block.parentElement !== view.dom) block = block.parentElement;
  return block;
}
