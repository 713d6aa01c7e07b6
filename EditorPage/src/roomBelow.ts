/**
 * Leaves room below a note that is longer than the window, so that its end can be brought to the middle. A note that
 * fits has none, and no scroll bar.
 */
export function keepRoomBelow(root: HTMLElement): void {
  const measure = (): void => {
    const note = root.querySelector<HTMLElement>('.ProseMirror');
    if (note === null) return;
    const style = getComputedStyle(note);
    // Without the room, the margin below is the one above.
    const height = note.offsetHeight - parseFloat(style.paddingBottom) + parseFloat(style.paddingTop);
    root.toggleAttribute('data-long', height > window.innerHeight + 1);
  };
  // Room that came or went at once would be seen as a change that nobody may see any more in this frame.
  new ResizeObserver(() => requestAnimationFrame(measure)).observe(root);
}
