/** Which files of a drop or paste are pictures for the note. */

/** Larger files are not sent through the page; the host's own file panel takes them. */
export const MOST_BYTES = 64 * 1024 * 1024;

const ENDINGS: Readonly<Record<string, string>> = {
  'image/png': 'png',
  'image/jpeg': 'jpg',
  'image/gif': 'gif',
  'image/webp': 'webp',
  'image/svg+xml': 'svg',
  'image/avif': 'avif',
  'image/bmp': 'bmp',
  'image/tiff': 'tif',
  'image/heic': 'heic',
  'image/heif': 'heif',
};

/** The pictures that the reader means: a spreadsheet's picture of its own cells is none. */
export function picturesIn(data: Pick<DataTransfer, 'files' | 'getData'> | null): File[] {
  const pictures = [...(data?.files ?? [])].filter(({ type }) => Object.hasOwn(ENDINGS, type));
  return pictures.length > 0 && data?.getData('text/plain').trim() ? [] : pictures;
}

/** The file's own name, or one for a picture that comes without, with the ending of what it is. */
export function withEnding({ name, type }: Pick<File, 'name' | 'type'>): string {
  const isNameless = name === '' || name === 'image.png';
  const wanted = isNameless ? 'Bild' : name;
  return /\.[A-Za-z0-9]{2,5}$/.test(wanted) ? wanted : `${wanted}.${ENDINGS[type] ?? 'png'}`;
}
