/**
 * Makes whole buckets with a fixed seed: notes of 1 to 20 KB in Swedish and English in nested folders, a few other files, some
 * names and texts in decomposed Unicode. Of the words that are searched, one stands in a quarter of the notes, one in every
 * note and one in a single note.
 */
import { existsSync, mkdirSync, rmSync, writeFileSync } from 'node:fs';
import path from 'node:path';

import { makeNote, noteSizes } from './notes.mjs';
import { Random } from './random.mjs';
import { english, swedish } from './words.mjs';

/** What is searched, by how many notes it hits. */
export const queries = {
  none: 'kvastskaftsprov',
  one: 'Tidskapselinventering',
  quarter: 'möte',
  all: 'anteckningsbok',
  letter: 'e',
};

const quarterLines = ['Möte med gruppen på fredag', 'Nästa möte blir kl 10', 'MÖTE: viktigt', 'Anteckningar från mötet'];
const allLines = ['Ur min anteckningsbok, sid 4', 'ANTECKNINGSBOK nr 2'];
const smallest = 1_000;
const largest = 20_000;

/** Blocks of ordinary notes without the words that are searched. */
function ordinaryBlocks() {
  const text = makeNote(noteSizes['5 MB']).replaceAll(/möte/gi, 'samtal');
  return text.split('\n\n').filter((block) => block.length < smallest);
}

function noteText(random, blocks, title, { isQuarter, isOne }) {
  const size = smallest * (largest / smallest) ** random.next();
  const note = [`# ${title}`];
  for (let length = title.length; length < size; length += note.at(-1).length + 2) note.push(random.pick(blocks));
  const insert = (line) => note.splice(random.between(1, note.length), 0, line);
  insert(random.pick(allLines));
  if (isQuarter) insert(random.pick(quarterLines));
  if (isOne) insert(`Inbjudan till ${queries.one} i Uppsala`);
  const text = `${note.join('\n\n')}\n`;
  if (random.chance(0.03)) return text.normalize('NFD');
  return random.chance(0.05) ? text.replaceAll('\n', '\r\n') : text;
}

function entryName(random) {
  const words = random.chance(0.6) ? swedish : english;
  const phrase = random.pick(words.subjects).replace(/möte/i, 'Samtal');
  const roll = random.next();
  let name = phrase;
  if (roll < 0.35) name = `${phrase} ${random.pick(words.places)}`;
  else if (roll < 0.55) name = `${phrase} ${random.between(1, 1000)}`;
  else if (roll < 0.7) name = `20${random.between(10, 25)}-0${random.between(1, 9)}-${random.between(10, 28)} ${phrase}`;
  return random.chance(0.05) ? name.normalize('NFD') : name;
}

const headings = [...swedish.headings, ...english.headings].map((heading, i) => (i % 8 === 0 ? heading.normalize('NFD') : heading));

/** Nested folders, about one for fourteen notes, six deep at most. */
function makeFolders(random, root, count) {
  const folders = [{ folder: root, depth: 0 }];
  while (folders.length <= count) {
    const parent = random.pick(folders);
    if (parent.depth === 6) continue;
    const folder = path.join(parent.folder, `${random.pick(headings)} ${folders.length}`);
    mkdirSync(folder);
    folders.push({ folder, depth: parent.depth + 1 });
  }
  return folders.map(({ folder }) => folder);
}

/** The path of a bucket with `count` notes, which is made when it is not there yet. */
export function bucketOf(count, out) {
  const root = path.join(out, `bucket-${count}`);
  const stamp = path.join(out, `bucket-${count}.made`);
  if (existsSync(stamp)) return root;
  rmSync(root, { recursive: true, force: true });
  mkdirSync(root, { recursive: true });
  const random = new Random(count);
  const blocks = ordinaryBlocks();
  const folders = makeFolders(random, root, count / 14);
  for (let i = 0; i < count; i++) {
    const title = entryName(random);
    const file = path.join(random.pick(folders), `${title} ${i}`);
    const marks = { isQuarter: i % 4 === 0, isOne: i === Math.floor(count * 0.6) };
    writeFileSync(file + (random.chance(0.95) ? '.md' : '.txt'), noteText(random, blocks, title, marks));
    if (random.chance(0.06)) writeFileSync(`${file}.png`, Buffer.alloc(random.between(2_000, 14_000), i));
  }
  writeFileSync(stamp, '');
  return root;
}
