/** Copy and paste: Markdown as text, and HTML through an inert, allow-listed reading. */
import type { EditorProps } from 'prosemirror-view';
import { pastedHtml } from './sanitise';
import type { SourceDocument } from './source/SourceDocument';

/** The editor's clipboard behaviour over the note that `source` gives. */
export function clipboardProps(_source: () => SourceDocument): EditorProps {
  return {
    transformPastedHTML: pastedHtml,
  };
}
