/** Pictures, embeds and videos. Pictures come from the bucket only; nothing is fetched from elsewhere before it is asked for. */
import type { Node } from 'prosemirror-model';
import { embedSource, imageSource, isPictureName, videoPlayer, type ImageSource } from '../addresses';
import type { NoteContext } from './context';
import type { InlineKind } from './inlineSource';

interface Shown {
  source: ImageSource;
  /** What a reader is told when the picture cannot be seen. */
  words: string;
  width: number | null;
}

function showPicture(place: HTMLElement, shown: Shown): void {
  const { source } = shown;
  if (source.kind === 'video') place.append(videoCard(source.id));
  else if (source.kind === 'bucket' || source.kind === 'data') place.append(picture(source.src, shown));
  else place.append(note(shown.words));
}

function picture(src: string, { words, width }: Shown): HTMLElement {
  const frame = document.createElement('span');
  frame.className = 'picture';
  const image = document.createElement('img');
  image.alt = words;
  image.loading = 'lazy';
  image.decoding = 'async';
  image.draggable = false;
  if (width !== null) image.width = width;
  image.addEventListener('error', () => frame.replaceWith(note(words)));
  image.src = src;
  frame.append(image);
  return frame;
}

function note(words: string): HTMLElement {
  const dom = document.createElement('span');
  dom.className = 'picture-note';
  dom.textContent = words;
  return dom;
}

/** Stands for a video; the player is fetched from its host when the card is pressed. */
function videoCard(id: string): HTMLElement {
  const card = document.createElement('span');
  card.className = 'video';
  const button = document.createElement('button');
  button.type = 'button';
  button.textContent = 'Spela videon';
  button.addEventListener('click', () => {
    const frame = document.createElement('iframe');
    frame.title = 'Video';
    frame.allow = 'autoplay; encrypted-media; fullscreen; picture-in-picture';
    frame.referrerPolicy = 'strict-origin';
    frame.setAttribute('sandbox', 'allow-scripts allow-same-origin allow-presentation');
    frame.src = videoPlayer(id);
    card.replaceChildren(frame);
  });
  card.append(button);
  return card;
}

/** A picture, by its own address or that of a definition. The field holds the address. */
export function pictureKind(context: NoteContext): InlineKind {
  const address = ({ attrs }: Node): string => (attrs.label === null ? (attrs.src as string) : (context.definitionFor(attrs.label as string)?.url ?? ''));
  return {
    className: 'image',
    label: 'Bildens adress',
    read: address,
    write: (source) => ({ src: source.trim(), reference: null, label: null }),
    draw: (place, source, node) => {
      const words = wordsFor(node.attrs.alt as string, source);
      showPicture(place, { source: imageSource(source, document.baseURI), words, width: null });
    },
  };
}

function wordsFor(alt: string, address: string): string {
  if (alt !== '') return alt;
  return address === '' ? 'Bild' : `Bild: ${lastStep(address)}`;
}

function lastStep(address: string): string {
  const name = address.split(/[?#]/, 1)[0]?.split('/').pop() ?? '';
  try {
    return decodeURIComponent(name);
  } catch {
    return name;
  }
}

/** `![[picture.png|300]]` as the picture, and `![[Note]]` as a link to it. */
export const embedKind: InlineKind = {
  className: 'embed',
  label: 'Inbäddat',
  read: wikiSource,
  write: wikiAttrs,
  draw: (place, _source, node) => {
    const { target, alias } = node.attrs as { target: string; alias: string | null };
    const name = target.split('#', 1)[0] ?? target;
    if (!isPictureName(name)) {
      place.append(embedLink(target, alias));
      return;
    }
    const width = alias !== null && /^\d{1,4}(?:x\d{1,4})?$/.test(alias) ? Number.parseInt(alias, 10) : null;
    showPicture(place, { source: embedSource(name, document.baseURI), words: `Bild: ${lastStep(name)}`, width });
  },
};

function embedLink(target: string, alias: string | null): HTMLElement {
  const link = document.createElement('a');
  link.className = 'embed-note';
  link.setAttribute('role', 'link');
  link.dataset['wiki'] = target;
  link.textContent = alias ?? target;
  return link;
}

/** The words between the brackets of a wiki link or embed. */
export function wikiSource(node: Node): string {
  const { target, alias } = node.attrs as { target: string; alias: string | null };
  return alias === null ? target : `${target}|${alias}`;
}

/** What the words between the brackets say; null when they say nothing. */
export function wikiAttrs(source: string): { target: string; alias: string | null } | null {
  const [target = '', ...rest] = source.replace(/[[\]\n]/g, '').split('|');
  if (target.trim() === '') return null;
  return { target: target.trim(), alias: rest.length === 0 ? null : rest.join('|').trim() };
}
