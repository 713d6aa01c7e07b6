/** Pictures that are dropped or pasted: the host puts them into the bucket, and the note gets a link to each. */
import type { ResolvedPos } from 'prosemirror-model';
import { Plugin, PluginKey, Selection, type EditorState } from 'prosemirror-state';
import { Decoration, DecorationSet, type EditorView } from 'prosemirror-view';
import { post } from '../bridge';
import { imageNode } from '../commands/insert';
import { schema } from '../schema';
import { MOST_BYTES, picturesIn, withEnding } from './files';

/** A picture on its way: a place in the note that moves along with what is edited around it. */
type Order = { add: { id: number; pos: number; name: string } } | { remove: number };

const key = new PluginKey<DecorationSet>('images');
const WAIT_FOR_READER = 6_000;

/** No number that an earlier page has used: an answer to that one may still come. */
let lastId = Math.trunc(performance.timeOrigin) % 1_000_000_000;

/** The plugin that takes pictures. */
export function imageDrops(): Plugin {
  return new Plugin<DecorationSet>({
    key,
    state: {
      init: () => DecorationSet.empty,
      apply(tr, set) {
        const order = tr.getMeta(key) as Order | undefined;
        const moved = set.map(tr.mapping, tr.doc);
        if (order && 'add' in order) return moved.add(tr.doc, [Decoration.widget(order.add.pos, () => notice(order.add.name), { id: order.add.id, side: order.add.id })]);
        return order ? moved.remove(moved.find(undefined, undefined, (spec) => spec['id'] === order.remove)) : moved;
      },
    },
    props: {
      decorations: (state) => key.getState(state),
      handlePaste: (view, event) => take(view, event.clipboardData, view.state.selection.from),
      handleDrop: (view, event) => take(view, event.dataTransfer, view.posAtCoords({ left: event.clientX, top: event.clientY })?.pos),
    },
  });
}

/** Stands where the picture will be. */
function notice(name: string): HTMLElement {
  const dom = document.createElement('span');
  dom.className = 'picture-note coming';
  dom.setAttribute('role', 'status');
  dom.textContent = `Lägger till ${name} …`;
  return dom;
}

/** Sends the pictures of a drop or paste to the host. Tells whether there were any. */
function take(view: EditorView, data: DataTransfer | null, at: number | undefined): boolean {
  const files = picturesIn(data);
  if (files.length === 0) return false;
  const pos = at === undefined ? null : placeNear(view.state.doc.resolve(at));
  if (pos === null) return true;
  for (const file of files) {
    const id = ++lastId;
    view.dispatch(view.state.tr.setMeta(key, { add: { id, pos, name: withEnding(file) } } satisfies Order));
    void send(view, id, file);
  }
  return true;
}

/** Where a picture can stand: at the place itself or in the text beside it, or behind a block that holds none. */
function placeNear($pos: ResolvedPos): number | null {
  const index = $pos.index();
  const isBetweenItems = !$pos.parent.inlineContent && !$pos.parent.canReplaceWith(index, index, schema.nodes.paragraph);
  for (let $at = isBetweenItems ? Selection.near($pos).$from : $pos; ; $at = $at.doc.resolve($at.after())) {
    const isHere = $at.parent.inlineContent ? $at.parent.canReplaceWith($at.index(), $at.index(), schema.nodes.image) : true;
    if (isHere) return $at.pos;
    if ($at.depth === 0) return null;
  }
}

async function send(view: EditorView, id: number, file: File): Promise<void> {
  const data = file.size <= MOST_BYTES ? await base64Of(file).catch(() => null) : null;
  if (data === null) receiveImage(view, id, null);
  else post('importImage', { id, name: withEnding(file), data });
}

function base64Of(file: File): Promise<string> {
  return new Promise((resolve, reject) => {
    const reader = new FileReader();
    reader.onload = () => resolve((reader.result as string).replace(/^[^,]*,/, ''));
    reader.onerror = () => reject(reader.error);
    reader.readAsDataURL(file);
  });
}

/** The host has put the picture `id` at `path` of the bucket; null when it could not. */
export function receiveImage(view: EditorView, id: number, path: string | null): void {
  const pos = placeOf(view.state, id);
  if (pos === null) return;
  const tr = view.state.tr.setMeta(key, { remove: id } satisfies Order);
  if (path !== null) {
    const picture = imageNode(path);
    tr.replaceWith(pos, pos, tr.doc.resolve(pos).parent.inlineContent ? picture : schema.nodes.paragraph.create(null, picture));
  }
  view.dispatch(tr);
  if (path === null) tellFailure();
}

function placeOf(state: EditorState, id: number): number | null {
  return key.getState(state)?.find(undefined, undefined, (spec) => spec['id'] === id)[0]?.from ?? null;
}

/** Says for a while that a picture was not taken. */
function tellFailure(): void {
  const message = document.createElement('div');
  message.className = 'page-notice';
  message.setAttribute('role', 'alert');
  message.textContent = 'Bilden kunde inte läggas till';
  document.body.append(message);
  setTimeout(() => message.remove(), WAIT_FOR_READER);
}
