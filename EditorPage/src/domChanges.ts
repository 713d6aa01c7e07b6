/** Ways to what a view does with changes of the screen, which it offers to nobody else. */
import type { EditorView } from 'prosemirror-view';

interface Observer {
  flush(): void;
  stop(): void;
  start(): void;
}

const observerOf = (view: EditorView) => (view as unknown as { domObserver: Observer }).domObserver;

/**
 * Has the view take over what has just happened on the screen. It would put back the caret that it knows in place of one that
 * the user has set since.
 */
export function takeDomChanges(view: EditorView): void {
  observerOf(view).flush();
}

/** Makes a change of the screen that the document is to get in another way. */
export function unobserved(view: EditorView, change: () => void): void {
  const observer = observerOf(view);
  observer.stop();
  change();
  observer.start();
}
