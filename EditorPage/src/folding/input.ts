/** What a key or another input will need of the note. */

/** With more of it folded, the selection is copied as its text alone. */
const COPIED_FORMATTED = 100_000;

/** Keys that, held with Ctrl, leave the selected blocks as they are, or take them as a whole. */
const PLAIN_WITH_CTRL = new Set(['a', 'c', 'v', 'x', 'y', 'z', 'home', 'end', 'arrowleft', 'arrowright', 'arrowup', 'arrowdown', 'control', 'shift', 'f', 'h', 'e', 'g', 'backspace', 'delete']);

/** Whether a key goes, or selects, to the end of the note. */
export function isToEnd({ key, ctrlKey, metaKey }: KeyboardEvent): boolean {
  return key === 'End' && (ctrlKey || metaKey);
}

/** Whether what comes now works on the selected blocks themselves, of which `folded` characters are folded. */
export function needsWholeSelection(event: Event, folded: number): boolean {
  if (folded === 0) return false;
  if (event.type === 'copy' || event.type === 'cut') return folded <= COPIED_FORMATTED;
  if (event.type === 'dragstart') return true;
  if (!(event instanceof KeyboardEvent)) return false;
  if (event.key === 'Tab') return true;
  return (event.ctrlKey || event.metaKey || event.altKey) && !PLAIN_WITH_CTRL.has(event.key.toLowerCase());
}
