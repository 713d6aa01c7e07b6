/** What the host's toolbar shows about the place of the caret. */
import type { MarkType, Node, ResolvedPos } from 'prosemirror-model';
import type { EditorState } from 'prosemirror-state';
import type { SelectionReport } from '../bridge';
import { schema } from '../schema';

const HIGHEST_LEVEL = 5;

/** The formatting at the caret, or of the selected text. */
export function selectionReport(state: EditorState): SelectionReport {
  const { $from } = state.selection;
  const list = innermostList($from);
  const level = $from.parent.type === schema.nodes.heading ? ($from.parent.attrs.level as number) : 0;
  return {
    bold: hasMark(state, schema.marks.strong),
    italic: hasMark(state, schema.marks.em),
    highlight: hasMark(state, schema.marks.highlight),
    bulletList: list !== null && list.attrs.kind === 'bullet',
    orderedList: list !== null && list.attrs.kind !== 'bullet',
    inTable: ancestorOf($from, (node) => node.type === schema.nodes.table) !== null,
    heading: level > HIGHEST_LEVEL ? 0 : level,
  };
}

/** Whether two reports say the same. */
export function sameReport(a: SelectionReport, b: SelectionReport): boolean {
  return (Object.keys(a) as (keyof SelectionReport)[]).every((key) => a[key] === b[key]);
}

/** Whether what is typed at the caret, or any of the selected text, has the mark. */
export function hasMark(state: EditorState, type: MarkType): boolean {
  const { empty, ranges, $from } = state.selection;
  if (empty) return type.isInSet(state.storedMarks ?? $from.marks()) !== undefined;
  return ranges.some(({ $from: from, $to: to }) => state.doc.rangeHasMark(from.pos, to.pos, type));
}

/** The nearest list around a place, of whatever kind. */
export function innermostList($pos: ResolvedPos): Node | null {
  return ancestorOf($pos, isList)?.node ?? null;
}

/** Whether a node is a list of any kind. */
export function isList(node: Node): boolean {
  return node.type.isInGroup('list');
}

/** The nearest node around a place that `matches`, and its depth. */
export function ancestorOf($pos: ResolvedPos, matches: (node: Node) => boolean): { node: Node; depth: number } | null {
  for (let depth = $pos.depth; depth > 0; depth--) {
    const node = $pos.node(depth);
    if (matches(node)) return { node, depth };
  }
  return null;
}
