/** Links: drawn without an address that the page could follow, and opened by the host. */
import type { Node } from 'prosemirror-model';
import { NodeSelection, Plugin, type Command, type EditorState } from 'prosemirror-state';
import type { MarkViewConstructor } from 'prosemirror-view';
import { mayOpen } from '../addresses';
import { post, type LinkRequest } from '../bridge';
import { schema } from '../schema';
import type { NoteContext } from './context';

/** A link of the note. The address is kept beside it as data. */
export const linkView: MarkViewConstructor = (mark) => {
  const dom = document.createElement('a');
  dom.setAttribute('role', 'link');
  const { href, label, title } = mark.attrs as { href: string; label: string | null; title: string | null };
  if (label === null) dom.dataset['href'] = href;
  else dom.dataset['label'] = label;
  dom.title = title ?? href;
  return { dom };
};

/** Opens the link, link to a note or embed that the event is on. Tells whether there was one. */
export function followLink(event: Event, context: NoteContext): boolean {
  const target = event.target instanceof Element ? event.target.closest<HTMLElement>('[data-href], [data-label], [data-wiki]') : null;
  if (target === null) return false;
  const { href, label, wiki } = target.dataset;
  if (wiki !== undefined) return open({ href: wiki, wiki: true });
  return open({ href: href ?? addressOf(label, context), wiki: false });
}

function addressOf(label: string | undefined, context: NoteContext): string {
  return label === undefined ? '' : (context.definitionFor(label)?.url ?? '');
}

function open(request: LinkRequest): boolean {
  if (!mayOpen(request.href)) return false;
  post('openLink', request);
  return true;
}

/** Opens the link at the caret. */
export function openAtCaret(context: NoteContext): Command {
  return (state) => {
    const request = requestAt(state, context);
    return request !== null && open(request);
  };
}

function requestAt({ selection }: EditorState, context: NoteContext): LinkRequest | null {
  if (selection instanceof NodeSelection) return wikiRequest(selection.node);
  const { $from } = selection;
  const wiki = $from.nodeAfter ? wikiRequest($from.nodeAfter) : null;
  const mark = schema.marks.link.isInSet($from.marks()) ?? schema.marks.link.isInSet($from.nodeAfter?.marks ?? []);
  if (!mark) return wiki;
  const { href, label } = mark.attrs as { href: string; label: string | null };
  return { href: label === null ? href : addressOf(label, context), wiki: false };
}

function wikiRequest(node: Node): LinkRequest | null {
  const isWiki = node.type === schema.nodes.wikilink || node.type === schema.nodes.embed;
  return isWiki ? { href: node.attrs.target as string, wiki: true } : null;
}

/** Opens links on a click, and keeps every click and drop from leading the page itself away. */
export function linkClicks(context: NoteContext): Plugin {
  return new Plugin({
    props: {
      handleClick: (_view, _pos, event) => event.button === 0 && !event.shiftKey && followLink(event, context),
      handleDOMEvents: { click: stayOnPage, auxclick: stayOnPage },
    },
  });
}

function stayOnPage(_view: unknown, event: Event): boolean {
  if (event.target instanceof Element && event.target.closest('a')) event.preventDefault();
  return false;
}
