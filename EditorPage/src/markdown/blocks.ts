import type { Heading, List, ListItem, Paragraph, RootContent, Table, TableRow } from 'mdast';
import { Fragment, type Attrs, type Node, type NodeType } from 'prosemirror-model';
import { schema, type CellAlign } from '../schema';
import { alignLines } from './align';
import { InlineReader } from './inline';
import { readLetterList } from './letterList';
import { missingPiece, type Built, type Piece } from './piece';
import type { Segment } from './segments';

const { nodes } = schema;

type Container = RootContent & { children: RootContent[] };

/** Turns parsed blocks into document nodes with their places in the source. */
export class BlockReader {
  private depth = 0;

  /** `shift` is taken off every offset of the tree. */
  constructor(
    private readonly source: string,
    private readonly shift: number,
  ) {}

  /** Reads one block. `origin` is the source offset that the piece's own offsets count from. */
  read(block: RootContent, origin: number): Built {
    switch (block.type) {
      case 'paragraph':
        return this.paragraph(block, origin, true);
      case 'heading':
        return this.heading(block, origin);
      case 'blockquote':
        return this.container(block, nodes.blockquote, null, origin);
      case 'footnoteDefinition':
        return this.container(block, nodes.footnote_definition, { label: block.label ?? block.identifier }, origin);
      case 'list':
        return this.list(block, origin);
      case 'table':
        return this.table(block, origin);
      case 'thematicBreak':
        return { node: nodes.horizontal_rule.create(), piece: this.piece(block, origin) };
      default:
        return this.sourceBlock(block, origin);
    }
  }

  private start(block: RootContent) {
    return block.position!.start.offset! - this.shift;
  }

  private end(block: RootContent) {
    return block.position!.end.offset! - this.shift;
  }

  private slice(block: RootContent) {
    return this.source.slice(this.start(block), this.end(block));
  }

  private piece(block: RootContent, origin: number, more: Partial<Piece> = {}): Piece {
    const start = this.start(block);
    const end = this.end(block);
    const inner = [0, end - start] as const;
    return { start: start - origin, end: end - origin, children: [], segments: [], inner, ...more };
  }

  private paragraph(block: Paragraph, origin: number, mayBeLetters: boolean): Built {
    const inline = new InlineReader(this.source, this.shift, this.start(block)).read(block.children);
    const node = nodes.paragraph.create(null, inline.content);
    const inner = [0, this.slice(block).trimEnd().length] as const;
    const piece = this.piece(block, origin, { segments: inline.segments, inner });
    return (mayBeLetters && readLetterList(node, piece)) || { node, piece };
  }

  private heading(block: Heading, origin: number): Built {
    const start = this.start(block);
    const children = block.children.map((child) =>
      child.type === 'break' ? { ...child, type: 'text' as const, value: '\n', data: { runs: [] } } : child,
    );
    const { content, segments } = new InlineReader(this.source, this.shift, start).read(children);
    const marker = /^#{0,6}[ \t]*/.exec(this.slice(block))![0].length;
    const first = block.children[0];
    const inner: [number, number] = first
      ? [this.start(first) - start, this.end(block.children.at(-1)!) - start]
      : [marker, marker];
    return {
      node: nodes.heading.create({ level: block.depth }, content),
      piece: this.piece(block, origin, { segments, inner }),
    };
  }

  private container(block: Container, type: NodeType, attrs: Attrs | null, origin: number): Built {
    const children = this.children(block);
    return build(type, attrs, children, this.piece(block, origin));
  }

  private children(block: Container): Built[] {
    const start = this.start(block);
    this.depth += 1;
    const built = block.children.map((child) => this.read(child, start));
    this.depth -= 1;
    return built.length > 0 ? built : [missingParagraph(this.slice(block).trimEnd().length)];
  }

  private list(block: List, origin: number): Built {
    const start = this.start(block);
    const attrs = { kind: block.ordered ? 'ordered' : 'bullet', start: block.ordered ? (block.start ?? 1) : 1 };
    const items = block.children.map((item) => this.listItem(item, start));
    return build(nodes.list, attrs, items, this.piece(block, origin));
  }

  private listItem(item: ListItem, origin: number): Built {
    const [first, ...rest] = item.children;
    const start = this.start(item);
    if (first?.type !== 'paragraph') return this.container(item, nodes.list_item, { checked: null }, origin);
    const box = item.checked === null && isText(first) ? /^\[([ xX])\]\s*$/.exec(this.slice(first)) : null;
    const checked = box === null ? (item.checked ?? null) : box[1] !== ' ';
    this.depth += 1;
    const opening =
      box === null ? this.paragraph(first, start, checked === null) : missingParagraph(this.start(first) - start + '[ ]'.length);
    const children = [opening, ...rest.map((child) => this.read(child, start))];
    this.depth -= 1;
    return build(nodes.list_item, { checked }, children, this.piece(item, origin));
  }

  private table(block: Table, origin: number): Built {
    const start = this.start(block);
    const width = Math.max(block.align?.length ?? 0, ...block.children.map((row) => row.children.length));
    const rows = block.children.map((row, index) => this.row(row, start, index === 0, width, block.align ?? []));
    return build(nodes.table, null, rows, this.piece(block, origin));
  }

  private row(
    row: TableRow,
    origin: number,
    isHeader: boolean,
    width: number,
    align: readonly (CellAlign | undefined)[],
  ) {
    const start = this.start(row);
    const type = isHeader ? nodes.table_header : nodes.table_cell;
    const cells: Built[] = row.children.map((cell, column): Built => {
      const from = this.start(cell);
      const inline = new InlineReader(this.source, this.shift, from).read(cell.children);
      const inner = cellInner(this.slice(cell));
      const piece = this.piece(cell, start, { segments: inline.segments, inner });
      return { node: type.create({ align: align[column] ?? null }, unbroken(inline.content)), piece };
    });
    while (cells.length < width) {
      const node = type.create({ align: align[cells.length] ?? null });
      cells.push({ node, piece: missingPiece(this.end(row) - start) });
    }
    return build(nodes.table_row, null, cells, this.piece(row, origin));
  }

  private sourceBlock(block: RootContent, origin: number): Built {
    switch (block.type) {
      case 'code':
        return this.lines(block, origin, nodes.code_block, { lang: block.lang ?? null, meta: block.meta ?? null });
      case 'math':
        return this.lines(block, origin, nodes.math_block, { meta: block.meta ?? null });
      case 'html':
        return this.lines(block, origin, nodes.html_block, null);
      case 'yaml':
        return this.lines(block, origin, nodes.front_matter, { format: 'yaml' });
      case 'definition':
        return this.verbatim(block, origin, nodes.definition);
      default:
        if ((block.type as string) === 'toml') {
          return this.lines(block as never, origin, nodes.front_matter, { format: 'toml' });
        }
        return this.verbatim(block, origin, nodes.raw_block);
    }
  }

  /** A block whose value stands line by line in the source, after an opening fence if it has one. */
  private lines(block: RootContent & { value: string }, origin: number, type: NodeType, attrs: Attrs | null): Built {
    const source = this.slice(block);
    const isFenced = block.type !== 'html' && !(block.type === 'code' && !/^(`{3}|~{3})/.test(source));
    const opening = isFenced ? source.indexOf('\n') + 1 : 0;
    const hasBody = !isFenced || opening > 0;
    const runs =
      block.value === ''
        ? [{ at: 0, from: opening, length: 0 }]
        : hasBody
          ? alignLines(block.value, source.slice(opening), opening)
          : [];
    const segments: Segment[] = runs.map(({ at, from, length }) => ({ at, size: length, from, length }));
    return {
      node: textNode(type, attrs, block.value),
      piece: this.piece(block, origin, { segments, inner: span(segments) }),
    };
  }

  /** A block that is shown as its own source. Markers of the containers around it are no part of it. */
  private verbatim(block: RootContent, origin: number, type: NodeType): Built {
    const source = this.slice(block);
    const text = source.replace(this.depth > 0 ? /\n[ \t>]*/g : /\n[ \t]*/g, '\n');
    const segments = alignLines(text, source, 0).map(({ at, from, length }) => ({ at, size: length, from, length }));
    return { node: textNode(type, null, text), piece: this.piece(block, origin, { segments }) };
  }
}

function build(type: NodeType, attrs: Attrs | null, children: readonly Built[], piece: Piece): Built {
  const content = Fragment.fromArray(children.map((child) => child.node));
  return { node: type.create(attrs, content), piece: { ...piece, children: children.map((child) => child.piece) } };
}

/** From the first place of some segments to the last. */
function span(segments: readonly Segment[]): [number, number] {
  const first = segments[0];
  const last = segments.at(-1);
  return first && last ? [first.from, last.from + last.length] : [0, 0];
}

function textNode(type: NodeType, attrs: Attrs | null, text: string): Node {
  return type.create(attrs, text ? schema.text(text) : null);
}

function missingParagraph(at: number): Built {
  return { node: nodes.paragraph.create(), piece: missingPiece(at) };
}

/** Whether a paragraph is a single run of text. Of an item it may be nothing but a box: a task that is about to be written. */
const isText = ({ children }: Paragraph): boolean => children.length === 1 && children[0]!.type === 'text';

/** From where to where a cell's content is written, in the cell's source with its pipes and blanks. */
function cellInner(source: string): [number, number] {
  const before = /^\|?[ \t]*/.exec(source)![0].length;
  const after = /[ \t]*\|?$/.exec(source)![0].length;
  if (before + after <= source.length) return [before, source.length - after];
  const at = Math.min(/^\|? ?/.exec(source)![0].length, source.length);
  return [at, at];
}

/** Cells are one line each. */
function unbroken(content: Fragment): Fragment {
  let hasBreak = false;
  content.forEach((node) => (hasBreak ||= node.type === nodes.hard_break));
  if (!hasBreak) return content;
  const parts: Node[] = [];
  content.forEach((node) => parts.push(node.type === nodes.hard_break ? schema.text(' ') : node));
  return Fragment.fromArray(parts);
}
