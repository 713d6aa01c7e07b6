/** Commands that put something new at the caret: links, pictures, videos. */
import type { Attrs, Node } from 'prosemirror-model';
import { TextSelection, type Command, type EditorState, type Transaction } from 'prosemirror-state';
import { videoId } from '../addresses';
import { schema } from '../schema';
import { insertBlocks } from './blocks';
import { atomAsText } from './inlineText';

type Dispatch = ((tr: Transaction) => void) | undefined;

/** Makes the selected text a link to `address`; with no selection, the link at the caret is changed or a new one written. */
export function insertLink(address: string): Command {
  return (state, dispatch) => {
    const href = address.trim();
    if (href === '') return false;
    const range = state.selection.empty ? linkRange(state) : state.selection;
    if (range === null) return insertInline(state, dispatch, bareLink(state, href));
    const mark = schema.marks.link.create({ href });
    if (!state.doc.resolve(range.from).parent.type.allowsMarkType(mark.type)) return false;
    dispatch?.(state.tr.removeMark(range.from, range.to, mark.type).addMark(range.from, range.to, mark).scrollIntoView());
    return true;
  };
}

/** A link whose text is its address; between blanks the address alone makes it one. */
function bareLink({ doc, selection: { from, to } }: EditorState, href: string): Node {
  const isAddress = /^(?:https?:\/\/|mailto:)[^\s<>]+$/i.test(href);
  const near = (start: number, end: number): string => doc.textBetween(Math.max(0, start), Math.min(doc.content.size, end), ' ', 'x');
  const isApart = !/\S/.test(near(from - 1, from)) && !/\S/.test(near(to, to + 1));
  return schema.text(href, [schema.marks.link.create({ href, auto: isAddress && isApart })]);
}

/** The extent of the link that the caret stands in. */
function linkRange(state: EditorState): { from: number; to: number } | null {
  const { $from } = state.selection;
  const mark = schema.marks.link.isInSet($from.marks());
  if (!mark) return null;
  let [from, to] = [$from.index(), $from.indexAfter()];
  while (from > 0 && mark.isInSet($from.parent.child(from - 1).marks)) from--;
  while (to < $from.parent.childCount && mark.isInSet($from.parent.child(to).marks)) to++;
  return { from: $from.posAtIndex(from), to: $from.posAtIndex(to) };
}

/** A link to the note `name`; selected text becomes what the reader sees of it. */
export function insertWikilink(name: string): Command {
  return (state, dispatch) => {
    const target = name.trim();
    if (target === '') return false;
    if (needsLink(target)) return insertLink(encodeURI(target))(state, dispatch);
    const { from, to } = state.selection;
    const seen = state.doc.textBetween(from, to, ' ');
    const alias = seen === '' || seen === target || /[[\]|\n]/.test(seen) ? null : seen;
    return insertInline(state, dispatch, noteLink(target, alias, false));
  };
}

/** The name's own brackets and bars would end a wiki link early; such a note gets an ordinary link. */
const needsLink = (name: string): boolean => /[[\]|\n]/.test(name);

/** What links to the note `name`, or shows it where `isEmbed` says so. */
export function noteLink(name: string, alias: string | null, isEmbed: boolean): Node {
  if (needsLink(name)) return schema.text(alias ?? name, [schema.marks.link.create({ href: encodeURI(name) })]);
  return schema.nodes[isEmbed ? 'embed' : 'wikilink'].create({ target: name, alias });
}

/** What shows the picture at `path` of the bucket. */
export function imageNode(path: string): Node {
  return schema.nodes.image.create(imageAttrs(path));
}

/** The picture at `path` of the bucket, at the caret. */
export function insertImage(path: string): Command {
  return (state, dispatch) => path !== '' && insertInline(state, dispatch, imageNode(path));
}

/** The video at `address` on a line of its own; an address of something else becomes a link. */
export function insertVideo(address: string): Command {
  return (state, dispatch) => {
    const src = address.trim();
    if (videoId(src) === null) return insertLink(src)(state, dispatch);
    const picture = imageNode(src);
    const { paragraph } = schema.nodes;
    const isBlock = insertBlocks(state, dispatch, [paragraph.create(null, picture), paragraph.create()], true);
    // Cells and the like hold no blocks.
    return isBlock || insertInline(state, dispatch, picture);
  };
}

function imageAttrs(src: string): Attrs {
  return { src, alt: '' };
}

/** Puts an inline node over the selection, with the caret after it. */
function insertInline(state: EditorState, dispatch: Dispatch, node: Node): boolean {
  const { $from, from } = state.selection;
  if ($from.parent.type.spec.code) return insertAtCode(state, dispatch, node);
  if (!$from.parent.inlineContent || !$from.parent.canReplaceWith($from.index(), $from.index(), node.type)) return false;
  if (node.marks.some((mark) => !$from.parent.type.allowsMarkType(mark.type))) return false;
  if (dispatch) {
    const tr = state.tr.replaceSelectionWith(node, false);
    dispatch(tr.setSelection(TextSelection.near(tr.doc.resolve(from + node.nodeSize))).setStoredMarks([]).scrollIntoView());
  }
  return true;
}

/** In code a link is its text; a picture is seen only below it. */
function insertAtCode(state: EditorState, dispatch: Dispatch, node: Node): boolean {
  if (node.type === schema.nodes.image) return insertBlocks(state, dispatch, [schema.nodes.paragraph.create(null, node)], true);
  dispatch?.(state.tr.insertText(atomAsText(node)).scrollIntoView());
  return true;
}
