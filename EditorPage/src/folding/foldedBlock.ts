/** What stands in place of folded blocks: an empty space of about their height. */
import type { Node } from 'prosemirror-model';
import type { NodeView, NodeViewConstructor } from 'prosemirror-view';
import { LINE, linesOf } from './heights';

/** Those that want to know which spaces there are. */
export interface Watcher {
  come(space: FoldedBlock): void;
  gone(space: FoldedBlock): void;
}

export class FoldedBlock implements NodeView {
  readonly dom = document.createElement('div');

  constructor(
    readonly node: Node,
    private watcher: Watcher,
  ) {
    this.dom.className = 'folded';
    this.dom.contentEditable = 'false';
    // Who is read to finds here that the note goes on; the text comes when the window or the caret does.
    this.dom.setAttribute('role', 'note');
    this.dom.setAttribute('aria-label', 'Här fortsätter anteckningen');
    this.dom.style.height = `${linesOf(node) * LINE}em`;
    watcher.come(this);
  }

  ignoreMutation(): boolean {
    return true;
  }

  destroy(): void {
    this.watcher.gone(this);
  }
}

export function foldedBlock(watcher: Watcher): NodeViewConstructor {
  return (node) => new FoldedBlock(node, watcher);
}
