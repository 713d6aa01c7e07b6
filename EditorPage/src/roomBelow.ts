/**
 * Leaves room below a note that is longer than the window, so that its end can be brought to the middle. A note that
 * fits has none, and no scroll bar.
 */
export function keepRoomBelow(root: HTMLElement): void {
  const measure = (): void => {
    const note = root.firstElementChild;
    if (!(note instanceof HTMLElement)) return;
    const style = getComputedStyle(note);
    // Without the room, the margin below is the one above.
    const height = note.offsetHeight - parseFloat(style.paddingBottom) + parseFloat(style.paddingTop);
    root.toggleAttribute('data-long', height > window.innerHeight + 1);
  };
  new ResizeObserver(measure).observe(root);
}
