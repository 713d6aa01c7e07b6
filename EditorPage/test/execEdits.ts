/** The commands of the toolbar as edits of a random sequence: with a caret, and with something selected. */
import { closeHistory } from 'prosemirror-history';
import { commandFor, commandNames } from '../src/commands/exec';
import type { Edit, Session } from './editing';
import type { Random } from './random';

const values: Readonly<Record<string, (random: Random) => string | number>> = {
  heading: (random) => 1 + random.below(5),
  link: (random) => random.pick(['https://x.se', 'b c.md', '']),
  wikilink: (random) => random.pick(['Not', 'Möte | två', 'a]]b']),
  image: (random) => random.pick(['assets/b.png', 'assets/två ord.png']),
  youtube: () => 'https://youtu.be/dQw4w9WgXcQ',
};

function run(name: string, reach: number): Edit {
  return (session: Session, random: Random) => {
    const { size } = session.state.doc.content;
    const from = random.below(size + 1);
    session.select(from, Math.min(size, from + random.below(reach + 1)));
    const command = commandFor(name, values[name]?.(random))!;
    return session.run((state, dispatch) => command(state, dispatch && ((tr) => dispatch(closeHistory(tr)))));
  };
}

const names = commandNames.filter((name) => name !== 'undo' && name !== 'redo');

export const execEdits: Readonly<Record<string, Edit>> = Object.fromEntries(
  names.flatMap((name) => [
    [`${name} at a caret`, run(name, 0)],
    [`${name} on a selection`, run(name, 200)],
  ]),
);
