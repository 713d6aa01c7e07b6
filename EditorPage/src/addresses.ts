/** What an address written in a note may do in the page. Everything that is not listed here is only text. */

/** How an image's address is shown. */
export type ImageSource =
  | { kind: 'bucket'; src: string }
  | { kind: 'data'; src: string }
  | { kind: 'video'; id: string }
  | { kind: 'remote' }
  | { kind: 'blocked' };

const SCHEME = /^[a-z][a-z0-9+.-]*:/i;
const INERT_DATA_IMAGE = /^data:image\/(?:png|jpe?g|gif|webp|avif|bmp|svg\+xml)[;,]/i;
const SCRIPT_SCHEMES = new Set(['javascript:', 'vbscript:', 'data:', 'blob:', 'about:', 'view-source:', 'vault:']);
const VIDEO_HOSTS = new Set(['youtube.com', 'www.youtube.com', 'm.youtube.com', 'youtube-nocookie.com', 'www.youtube-nocookie.com']);
const VIDEO_ID = /^[\w-]{6,20}$/;

/** The scheme of `address` with its colon, lower-cased, as a browser would read it; null for a relative one. */
export function schemeOf(address: string): string | null {
  // Browsers drop control characters and leading blanks before they look for the scheme.
  const cleaned = address.replace(/[\u0000-\u0020\u007f-\u009f\u200b\u2028\u2029\ufeff]/g, '');
  const match = SCHEME.exec(cleaned);
  return match ? match[0].toLowerCase() : null;
}

/** Whether a click on `href` may be handed to the host. */
export function mayOpen(href: string): boolean {
  const scheme = schemeOf(href);
  return href.trim() !== '' && (scheme === null || !SCRIPT_SCHEMES.has(scheme));
}

/** The video that `address` names, or null. */
export function videoId(address: string): string | null {
  let url: URL;
  try {
    url = new URL(address.trim());
  } catch {
    return null;
  }
  if (url.protocol !== 'https:' && url.protocol !== 'http:') return null;
  const id = idInAddress(url);
  return id !== null && VIDEO_ID.test(id) ? id : null;
}

function idInAddress(url: URL): string | null {
  const host = url.hostname.toLowerCase();
  if (host === 'youtu.be') return url.pathname.slice(1);
  if (!VIDEO_HOSTS.has(host)) return null;
  if (url.pathname === '/watch') return url.searchParams.get('v');
  return /^\/(?:embed|shorts|live)\/([^/]+)$/.exec(url.pathname)?.[1] ?? null;
}

/** The privacy-enhanced player of the video `id`, started at once because the reader has just asked for it. */
export function videoPlayer(id: string): string {
  return `https://www.youtube-nocookie.com/embed/${encodeURIComponent(id)}?autoplay=1&rel=0`;
}

/**
 * Where the picture at `address` comes from. Files of the bucket are served below `assets/` of the page's own
 * origin; nothing else is ever fetched.
 */
export function imageSource(address: string, base: string): ImageSource {
  const trimmed = address.trim();
  const video = videoId(trimmed);
  if (video !== null) return { kind: 'video', id: video };
  const scheme = schemeOf(trimmed);
  if (scheme === 'data:') return INERT_DATA_IMAGE.test(trimmed) ? { kind: 'data', src: trimmed } : { kind: 'blocked' };
  if (scheme === 'http:' || scheme === 'https:' || trimmed.startsWith('//')) return { kind: 'remote' };
  if (scheme !== null || trimmed === '' || climbs(trimmed)) return { kind: 'blocked' };
  return bucketSource(trimmed, base);
}

/** Whether a step of the path, however it is escaped, leads upwards or hides a separator. */
function climbs(address: string): boolean {
  const path = address.split(/[?#]/, 1)[0] ?? '';
  if (/%(?:2f|5c|00)/i.test(path) || path.includes('\\')) return true;
  return path.split('/').some((step) => /^(?:\.|%2e){2}$/i.test(step));
}

function bucketSource(address: string, base: string): ImageSource {
  const path = address.replace(/^(?:\.?\/)+/, '');
  if (!/^assets\/./.test(path)) return { kind: 'blocked' };
  const url = new URL(escapeStrayPercent(path), base);
  return url.href.startsWith(new URL('assets/', base).href) ? { kind: 'bucket', src: url.href } : { kind: 'blocked' };
}

/** A "%" that starts no escape is part of a file's name ("100 %.png"), and so is "#" or "?" in a wiki embed. */
function escapeStrayPercent(path: string): string {
  return path.replace(/%(?![0-9a-f]{2})/gi, '%25');
}

/** The picture that a wiki embed names: a bare name lies in the bucket's `assets` folder. */
export function embedSource(target: string, base: string): ImageSource {
  const path = target.includes('/') ? target : `assets/${target}`;
  const escaped = path.split('/').map((step) => (step === '..' ? step : encodeURIComponent(step))).join('/');
  return imageSource(escaped, base);
}

/** Whether `name` ends like a picture that the page can draw. */
export function isPictureName(name: string): boolean {
  return /\.(?:png|jpe?g|gif|webp|avif|bmp|svg|ico|heic|heif|tiff?)$/i.test(name);
}
