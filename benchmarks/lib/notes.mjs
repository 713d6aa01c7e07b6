/**
 * Makes the notes that are measured: prose in Swedish and English with headings, lists, tables, code, quotes and links, as
 * real notes have them. The same size always gives the same bytes.
 */
import { mkdirSync, writeFileSync } from 'node:fs';
import path from 'node:path';

import { Random } from './random.mjs';
import { english, swedish } from './words.mjs';

/** The sizes that are measured, by name, in bytes. */
export const noteSizes = {
  '1 KB': 1_000,
  '10 KB': 10_000,
  '100 KB': 100_000,
  '1 MB': 1_000_000,
  '5 MB': 5_000_000,
};

const emphases = [(t) => `**${t}**`, (t) => `*${t}*`, (t) => `==${t}==`, (t) => `\`${t}\``];
const links = [
  (r, t) => `[${t}](https://example.org/${r.between(1, 900)})`,
  (r, t) => `[[${t}]]`,
  (r, t) => `[[${t}|${t.toLowerCase()}]]`,
  (r, t) => `[${t}](Bilagor/bild-${r.between(1, 40)}.png)`,
];

function sentence(random, words) {
  let subject = random.pick(words.subjects);
  if (random.chance(0.12)) subject = random.pick(links)(random, subject);
  let verb = random.pick(words.verbs);
  if (random.chance(0.15)) verb = random.pick(emphases)(verb);
  const parts = [subject, verb, random.pick(words.places)];
  const ending = random.chance(0.4) ? `, ${random.pick(words.additions)}` : '';
  return `${parts.join(' ')}${ending}.`;
}

function paragraph(random, words) {
  return Array.from({ length: random.between(2, 6) }, () => sentence(random, words)).join(' ');
}

function phrase(random, words) {
  return `${random.pick(words.subjects)} ${random.pick(words.places)}`;
}

function bulletList(random, words) {
  const lines = [];
  for (let i = random.between(3, 7); i > 0; i--) {
    lines.push(`- ${phrase(random, words)}`);
    if (random.chance(0.25)) lines.push(`  - ${phrase(random, words)}`, `  - ${sentence(random, words)}`);
  }
  return lines.join('\n');
}

function orderedList(random, words) {
  return Array.from({ length: random.between(3, 6) }, (_, i) => `${i + 1}. ${sentence(random, words)}`).join('\n');
}

function taskList(random, words) {
  const box = () => (random.chance(0.4) ? '[x]' : '[ ]');
  return Array.from({ length: random.between(3, 6) }, () => `- ${box()} ${phrase(random, words)}`).join('\n');
}

function table(random, words) {
  const row = (cells) => `| ${cells.join(' | ')} |`;
  const rows = Array.from({ length: random.between(3, 8) }, () =>
    row([random.pick(words.subjects), `${random.between(10, 99_000)} kr`, random.pick(words.places)]),
  );
  return [row(['Post', 'Belopp', 'Not']), '| --- | ---: | :--- |', ...rows].join('\n');
}

function code(random) {
  const lines = Array.from({ length: random.between(3, 9) }, () => {
    const name = random.pick(['summa', 'rader', 'total', 'index', 'namn']);
    return `  const ${name}${random.between(1, 99)} = berakna(${random.between(1, 500)}, "${name}"); // rad`;
  });
  return ['```js', 'function kör() {', ...lines, '}', '```'].join('\n');
}

function quote(random, words) {
  return Array.from({ length: random.between(1, 3) }, () => `> ${sentence(random, words)}`).join('\n');
}

const blocks = [
  [0.4, paragraph],
  [0.6, bulletList],
  [0.7, orderedList],
  [0.78, taskList],
  [0.86, table],
  [0.93, quote],
  [1, code],
];

/** The next block; after anything but prose comes prose, so that two lists never run into one. */
function nextBlock(random, previous) {
  const roll = random.next();
  return previous === paragraph ? blocks.find(([limit]) => roll < limit)[1] : paragraph;
}

/** Whole blocks of Markdown, as many as fit into `bytes`; the note begins with a heading and a paragraph. */
export function makeNote(bytes) {
  const random = new Random(bytes);
  const note = ['# Mötesanteckningar från hela året', paragraph(random, swedish)];
  let size = Buffer.byteLength(note.join('\n\n')) + 1;
  let words = swedish;
  let block = paragraph;
  for (let untilHeading = 4; ; untilHeading--) {
    let text;
    if (untilHeading > 0) {
      block = nextBlock(random, block);
      text = block(random, words);
    } else {
      words = random.chance(0.65) ? swedish : english;
      untilHeading = random.between(4, 9);
      text = `${random.pick(['##', '##', '###'])} ${random.pick(words.headings)}`;
    }
    size += Buffer.byteLength(text) + 2;
    if (size > bytes) return `${note.join('\n\n')}\n`;
    note.push(text);
  }
}

/** Notes that are a heading and one long block, by name. */
const longBlocks = {
  'list of 5,000 items': (random) => Array.from({ length: 5_000 }, () => `- ${phrase(random, swedish)}`).join('\n'),
  'paragraph of 128 KB': (random) => {
    let text = sentence(random, swedish);
    while (text.length < 128_000) text += ` ${sentence(random, swedish)}`;
    return text;
  },
};

function noteNamed(name) {
  const makeBlock = longBlocks[name];
  return makeBlock ? `# Ett enda långt block\n\n${makeBlock(new Random(5_000))}\n` : makeNote(noteSizes[name]);
}

/** Writes the note `name`, a size or a long block, into `folder` and gives its path. */
export function writeNote(name, folder) {
  mkdirSync(folder, { recursive: true });
  const file = path.join(folder, `${name.replace(/[ ,]/g, '').toLowerCase()}.md`);
  writeFileSync(file, noteNamed(name));
  return file;
}
