/** Tells the host about the formatting at the caret, whenever that changes. */
import { Plugin, type EditorState } from 'prosemirror-state';
import { post, type SelectionReport } from '../bridge';
import { sameReport, selectionReport } from './selection';

/** The plugin that posts "selection". */
export function selectionReporter(): Plugin {
  let last: SelectionReport | null = null;
  const tell = (state: EditorState): void => {
    const report = selectionReport(state);
    if (last !== null && sameReport(last, report)) return;
    last = report;
    post('selection', report);
  };
  return new Plugin({
    view: (view) => {
      // Made anew with every note; the first time, before the page has said that it is ready.
      queueMicrotask(() => tell(view.state));
      return { update: (changed) => tell(changed.state) };
    },
  });
}
