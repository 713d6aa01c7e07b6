/** Links: drawn without an address that the page could follow, and opened by the host on a click. */
import type { Mark } from 'prosemirror-model';
import { Plugin } from 'prosemirror-state';
import type { MarkViewConstructor } from 'prosemirror-view';
import { mayOpen } from '../addresses';
import { post } from '../bridge';
import type { NoteContext } from '../plugins';

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

/** Whether the mark is a link that can be followed. */
export function hrefOf(mark: Mark): string {
  return mark.attrs.href as string;
}

/** Opens what is clicked: links, links to notes, embeds, and links in drawn HTML. */
export function linkClicks(context: NoteContext): Plugin {
  const open = (event: MouseEvent): boolean => {
    const target = event.target instanceof Element ? event.target.closest<HTMLElement>('[data-href], [data-label], [data-wiki]') : null;
    if (target === null) return false;
    const wiki = target.dataset['wiki'];
    const label = target.dataset['label'];
    const href = wiki ?? target.dataset['href'] ?? (label === undefined ? undefined : context.definitionFor(label)?.url);
    if (href === undefined || !mayOpen(href)) return false;
    post('openLink', { href, wiki: wiki !== undefined });
    return true;
  };
  return new Plugin({
    props: {
      handleClick: (view, _pos, event) => event.button === 0 && !event.shiftKey && view.state.selection.empty && open(event),
      handleDOMEvents: {
        // No click of whatever kind may lead the page itself away.
        click: (_view, event) => stopOnLink(event),
        auxclick: (_view, event) => stopOnLink(event),
      },
    },
  });
}

function stopOnLink(event: Event): boolean {
  if (event.target instanceof Element && event.target.closest('a')) event.preventDefault();
  return false;
}
