/** Whatever is done at the caret: it stays at its words, and what is typed next stands there. */
import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { EditorState } from 'prosemirror-state';
import { Random } from '../random';
import { play } from './playing';

const ROUNDS = process.env['LONG'] === '1' ? 2_000 : 400;

const notes = [
  '‸\n', 'ett‸\n', '# ett‸\n', 'ett  \ntvå‸\n', 'ett\ntvå‸ tre\n', 'ett\n===\n\ntvå‸\n', '---\n\nett‸\n', '**ett‸** två\n',
  '- ett‸\n', '- ett\n- två‸\n- tre\n', '- ett\n  - två‸\n- tre\n', '- ett\n\n  två‸\n\n- tre\n', '1. ett‸\n2. två\n', '- [ ] ett‸\n- [x] två\n',
  'A. ett‸\nB. två\n', '> ett‸\n', '> - ett‸\n', '> [!note] t\n> ett‸\n', 'ett‸\n\n- två\n', 'ett‸\n\n> två\n', 'a[^a]\n\n[^a]: ett‸\n',
  '| a | b |\n| - | - |\n| c | d‸ |\n', '- | a | b |\n  | - | - |\n  | c | d‸ |\n', '```\nett‸\n```\n', '- ```\n  ett‸\n  ```\n',
];
const keys = ['<Enter>', '<Tab>', '<Shift-Tab>', '<Shift-Enter>', '<Ctrl-Enter>'];
const commands = ['{bulletList}', '{orderedList}', '{taskList}', '{letterList}', '{blockquote}', '{codeBlock}', '{paragraph}', '{bold}'];
/** Typed at the start of a line these become something else; elsewhere they are text. */
const starts = ['- ', '1. ', '[ ] ', '- [ ] ', '> ', '# '];
const words = ['ord', 'ord ', '**fet** ', '==m== ', '`k` '];
/** What may take words away or go elsewhere; only what is typed afterwards is looked at. */
const others = ['{undo}', '{horizontalRule}', '{insertTable}', '<Alt-ArrowUp>', '<Alt-ArrowDown>', '```', '---', '$$', '| a | b |'];
const acts = [...keys, ...commands, ...starts, ...words, ...others];

/** The words before the caret: in its own block, and in the blocks before. */
interface Place {
  own: string;
  before: string;
}

/** Without blanks, line breaks and what may be a marker. */
const wordsOf = (text: string): string => text.replace(/[^\p{L}]/gu, '');

/** Null where the caret is in no text, or something is selected. */
function placeOf({ doc, selection: { $head, empty } }: EditorState): Place | null {
  if (!empty || !$head.parent.isTextblock) return null;
  const start = $head.start();
  return { own: wordsOf(doc.textBetween(start, $head.pos)), before: wordsOf(doc.textBetween(0, start, ' ')) };
}

/** What the act should have done to the caret's words; null when nothing can be said. */
function expected(act: string, { own, before }: Place, block: string): Place[] | null {
  if (others.includes(act) || (block.startsWith('table') && keys.includes(act))) return null;
  if (block === 'code_block' && act === '<Ctrl-Enter>') return null;
  const typed = act.startsWith('<') || act.startsWith('{') ? '' : wordsOf(act);
  const goesOn = { own: own + typed, before };
  return act === '<Enter>' || act === '<Ctrl-Enter>' ? [goesOn, { own: '', before: before + own }] : [goesOn];
}

function actsOf(random: Random): string[] {
  const chosen: string[] = [];
  for (let left = 1 + random.below(6); left > 0; left -= 1) {
    for (let enters = random.below(2) * (1 + random.below(3)); enters > 0; enters -= 1) chosen.push('<Enter>');
    chosen.push(random.pick(acts));
    if (random.below(2) === 0) chosen.push('ord');
  }
  return [...chosen, 'ord'];
}

test('whatever is done, the caret stays at its words', () => {
  let looked = 0;
  for (let seed = 0; seed < ROUNDS; seed += 1) {
    const random = new Random(seed);
    const note = random.pick(notes);
    const chosen = actsOf(random);
    const states: EditorState[] = [];
    play(note, chosen, (state) => states.push(state));
    for (const [index, act] of chosen.entries()) {
      const [old, now] = [placeOf(states[index]!), placeOf(states[index + 1]!)];
      // A line of code's opening becomes the block's language.
      const isOpening = old !== null && states[index]!.selection.$head.parent.textContent.startsWith('```');
      if (old === null || now === null || isOpening) continue;
      const wanted = expected(act, old, states[index]!.selection.$head.parent.type.name);
      if (wanted === null) continue;
      looked += 1;
      const isRight = wanted.some(({ own, before }) => own === now.own && before === now.before);
      assert.ok(isRight, `seed ${seed}: ${JSON.stringify(note)} ${chosen.slice(0, index + 1).join(' ')}: ${JSON.stringify(now)}`);
    }
  }
  assert.ok(looked > ROUNDS, `only ${looked} acts were looked at`);
});
