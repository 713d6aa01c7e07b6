/** Harmless tags in a line are shown as what they say; they themselves are hidden while the caret is elsewhere. */
import type { Node } from 'prosemirror-model';
import { Plugin, type EditorState } from 'prosemirror-state';
import { Decoration, DecorationSet } from 'prosemirror-view';
import { schema } from '../schema';

/** Elements that only look. Tags with attributes are left as they are. */
const SHOWN: ReadonlySet<string> = new Set(['kbd', 'sub', 'sup', 'u', 'ins', 'small', 'samp', 'var', 'mark', 'q']);

/** An element written in a line: its name and the places of its two tags in the text block's content. */
export interface InlineElement {
  name: string;
  open: number;
  close: number;
}

/** The elements of a text block whose tags are both there, in the order of their ends. */
export function inlineElements(block: Node): InlineElement[] {
  const found: InlineElement[] = [];
  let opened: { name: string; open: number }[] = [];
  block.forEach((child, offset) => {
    const [, slash, tag] = (child.type === schema.nodes.html_inline && /^<(\/?)([a-z]+)>$/i.exec(child.attrs.value)) || [];
    const name = tag?.toLowerCase() ?? '';
    if (!SHOWN.has(name)) return;
    if (!slash) return void opened.push({ name, open: offset });
    const index = opened.map((one) => one.name).lastIndexOf(name);
    if (index < 0) return;
    found.push({ ...opened[index]!, close: offset });
    opened = opened.slice(0, index);
  });
  return found;
}

/** Adds the decorations of a text block that stands at `pos`. */
export function decorateInlineHtml(block: Node, pos: number, made: Decoration[]): void {
  for (const { name, open, close } of inlineElements(block)) {
    const [start, end] = [pos + 1 + open, pos + 1 + close];
    made.push(Decoration.node(start, start + 1, { class: 'html-tag' }), Decoration.node(end, end + 1, { class: 'html-tag' }));
    if (end > start + 1) made.push(Decoration.inline(start + 1, end, { nodeName: name }));
  }
}

/** The plugin that shows the tags of the text block that the caret is in. */
export function tagsAtCaret(): Plugin {
  return new Plugin({ props: { decorations: shownTags } });
}

function shownTags({ doc, selection: { $head } }: EditorState): DecorationSet | null {
  if (!$head.parent.isTextblock || inlineElements($head.parent).length === 0) return null;
  return DecorationSet.create(doc, [Decoration.node($head.before(), $head.after(), { class: 'shows-tags' })]);
}
