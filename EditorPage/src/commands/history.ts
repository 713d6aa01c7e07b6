/** Steps of the undo history. */
import { closeHistory } from 'prosemirror-history';
import type { Command } from 'prosemirror-state';

/** The command as a step that is undone alone, not together with what was typed just before it. */
export function alone(command: Command): Command {
  return (state, dispatch, view) => command(state, dispatch && ((tr) => dispatch(closeHistory(tr))), view);
}
