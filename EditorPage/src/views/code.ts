/** Code blocks, with the name of their language in the corner. */
import type { Node } from 'prosemirror-model';
import type { NodeView, NodeViewConstructor } from 'prosemirror-view';

class CodeBlock implements NodeView {
  readonly dom = document.createElement('div');
  readonly contentDOM: HTMLElement;
  #language = document.createElement('span');

  constructor(private node: Node) {
    this.dom.className = 'code-block';
    const pre = document.createElement('pre');
    pre.spellcheck = false;
    this.contentDOM = pre.appendChild(document.createElement('code'));
    this.#language.className = 'code-language';
    this.#language.contentEditable = 'false';
    this.dom.append(pre, this.#language);
    this.#show();
  }

  update(node: Node): boolean {
    if (node.type !== this.node.type) return false;
    this.node = node;
    this.#show();
    return true;
  }

  ignoreMutation(mutation: { target: globalThis.Node; type: string }): boolean {
    return mutation.type !== 'selection' && !this.contentDOM.contains(mutation.target);
  }

  #show(): void {
    this.#language.textContent = (this.node.attrs.lang as string | null) ?? '';
  }
}

export const codeBlockView: NodeViewConstructor = (node) => new CodeBlock(node);
