/** What stands in place of a note that is too long to be shown. */

/** Reading longer notes, in characters, would stop the page for too long. */
const LONGEST_NOTE = 8_000_000;

export const isTooLong = (text: string): boolean => text.length > LONGEST_NOTE;

/** Tells above the (empty) note in `root` why `text` is not shown, or, without one, takes that away. */
export function showTooLong(root: HTMLElement, text: string | null): void {
  root.querySelector('.too-long')?.remove();
  if (text === null) return;
  const notice = document.createElement('p');
  notice.className = 'too-long';
  notice.setAttribute('role', 'status');
  const millions = Math.round(text.length / 1_000_000);
  notice.textContent = `Noten är för stor för att visas här: ${millions} miljoner tecken. Den ligger orörd i sin fil.`;
  root.prepend(notice);
}
