import type { Link, PhrasingContent, Text } from 'mdast';
import { Fragment, type Mark, type Node } from 'prosemirror-model';
import { schema } from '../schema';
import type { Segment } from './segments';
import { alignLines, readInlineCode } from './align';

const { nodes, marks } = schema;

/** The content of a text block, with the places of its parts in the source. */
export interface Inline {
  content: Fragment;
  segments: Segment[];
}

/** Turns what stands between the ends of a text block into its content. */
export class InlineReader {
  private readonly parts: Node[] = [];
  private readonly segments: Segment[] = [];
  private size = 0;

  /** `shift` is taken off every offset of the tree; `origin` is where the text block's piece starts in `source`. */
  constructor(
    private readonly source: string,
    private readonly shift: number,
    private readonly origin: number,
  ) {}

  /** Reads the children of one text block. Throws on what the parser never makes. */
  read(children: readonly PhrasingContent[]): Inline {
    this.addAll(children, []);
    return { content: Fragment.fromArray(this.parts), segments: this.segments };
  }

  private addAll(children: readonly PhrasingContent[], outer: readonly Mark[]) {
    for (const child of children) this.add(child, outer);
  }

  private add(node: PhrasingContent, outer: readonly Mark[]) {
    switch (node.type) {
      case 'text':
        return this.addTextNode(node, outer);
      case 'emphasis':
        return this.addMarked(node, marks.em.create(), outer);
      case 'strong':
        return this.addMarked(node, marks.strong.create(), outer);
      case 'delete':
        return this.addMarked(node, marks.strike.create(), outer);
      case 'highlight':
        return this.addMarked(node, marks.highlight.create(), outer);
      case 'inlineCode':
        return this.addCode(node, outer);
      case 'link':
        return this.addLink(node, this.linkMark(node), outer);
      case 'linkReference': {
        const attrs = { reference: node.referenceType, label: node.label ?? node.identifier };
        return this.addLink(node, marks.link.create(attrs), outer);
      }
      default:
        return this.addLeaf(node, this.leaf(node).mark(outer));
    }
  }

  private leaf(node: PhrasingContent): Node {
    switch (node.type) {
      case 'break':
        return nodes.hard_break.create();
      case 'image':
        return nodes.image.create({ src: node.url, alt: node.alt ?? '', title: node.title ?? null });
      case 'imageReference': {
        const label = node.label ?? node.identifier;
        return nodes.image.create({ alt: node.alt ?? '', reference: node.referenceType, label });
      }
      case 'html':
        return nodes.html_inline.create({ value: node.value });
      case 'footnoteReference':
        return nodes.footnote_reference.create({ label: node.label ?? node.identifier });
      case 'mathInline':
        return nodes.math_inline.create({ value: node.value });
      case 'wikilink': {
        const type = node.isEmbed ? nodes.embed : nodes.wikilink;
        return type.create({ target: node.target, alias: node.alias });
      }
      default:
        return nodes.raw_inline.create({ source: this.slice(node) });
    }
  }

  private start(node: PhrasingContent) {
    return node.position!.start.offset! - this.shift;
  }

  private end(node: PhrasingContent) {
    return node.position!.end.offset! - this.shift;
  }

  private slice(node: PhrasingContent) {
    return this.source.slice(this.start(node), this.end(node));
  }

  private linkMark(node: Link): Mark {
    const auto = this.source[this.start(node)] !== '[';
    return marks.link.create({ href: node.url, title: node.title ?? null, auto });
  }

  /** The outer edges of a mark are places too: what is written there stands outside of it. */
  private addMarked(node: PhrasingContent & { children: PhrasingContent[] }, mark: Mark, outer: readonly Mark[]) {
    this.addEdge(this.start(node));
    this.addAll(node.children, mark.addToSet(outer));
    this.addEdge(this.end(node));
  }

  private addEdge(from: number) {
    this.segments.push({ at: this.size, size: 0, from: from - this.origin, length: 0 });
  }

  /** A link without text has nothing that could carry its mark: its source is kept instead. */
  private addLink(node: PhrasingContent & { children: PhrasingContent[] }, mark: Mark, outer: readonly Mark[]) {
    const before = this.size;
    this.addMarked(node, mark, outer);
    if (this.size === before) this.addLeaf(node, nodes.raw_inline.create({ source: this.slice(node) }, null, outer));
  }

  private addLeaf(node: PhrasingContent, leaf: Node) {
    const from = this.start(node);
    this.segments.push({ at: this.size, size: 1, from: from - this.origin, length: this.end(node) - from });
    this.append(leaf);
  }

  private addTextNode(node: Text, outer: readonly Mark[]) {
    const from = this.start(node);
    if (this.end(node) - from === node.value.length) {
      this.addRun({ at: 0, from, length: node.value.length });
    } else {
      // What begins with an escape begins before its backslash.
      this.addEdge(from);
      for (const run of this.runsOf(node)) this.addRun(run);
    }
    this.addText(node.value, outer);
  }

  /** The stretches of a text that the source has as they are. The blank behind a task's box is in the first, but not in the text. */
  private runsOf(node: Text) {
    const runs = (node.data?.runs ?? []).map((run) => ({ ...run, from: run.from - this.shift }));
    const lost = runs[0] ? Math.max(0, this.start(node) - runs[0].from) : 0;
    if (lost === 0) return runs;
    const [first, ...others] = runs.map((run) => ({ ...run, at: run.at - lost }));
    return [{ at: 0, from: first!.from + lost, length: first!.length - lost }, ...others];
  }

  private addCode(node: PhrasingContent & { value: string }, outer: readonly Mark[]) {
    if (node.value === '')
      return this.addLeaf(node, nodes.raw_inline.create({ source: this.slice(node) }, null, outer));
    const inner = readInlineCode(this.slice(node), node.value);
    for (const run of alignLines(node.value, inner.text, this.start(node) + inner.from)) this.addRun(run);
    return this.addText(node.value.replace(/\n/g, ' '), marks.code.create().addToSet(outer));
  }

  private addRun({ at, from, length }: { at: number; from: number; length: number }) {
    const last = this.segments.at(-1);
    const start = this.size + at;
    const source = from - this.origin;
    const continues =
      last && last.size === last.length && last.at + last.size === start && last.from + last.length === source;
    if (continues) {
      last.size += length;
      last.length += length;
    } else {
      this.segments.push({ at: start, size: length, from: source, length });
    }
  }

  private addText(value: string, outer: readonly Mark[]) {
    if (value) this.append(schema.text(value, outer));
  }

  /** Neighbouring text with the same marks is one node, as it is in every edited document. */
  private append(node: Node) {
    const last = this.parts.at(-1);
    if (last?.isText && node.isText && last.sameMarkup(node)) {
      this.parts[this.parts.length - 1] = schema.text(last.text! + node.text!, last.marks);
    } else {
      this.parts.push(node);
    }
    this.size += node.nodeSize;
  }
}
