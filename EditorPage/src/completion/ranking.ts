/** Which names are offered for what was typed, best first. */

/** No reader looks through more. */
const MOST = 50;

/** The names that `typed` may mean: those that begin with it, then those with a word that does, then those that hold it. */
export function offered(names: readonly string[], typed: string): string[] {
  const wanted = folded(typed.trim());
  if (wanted === '') return names.slice(0, MOST);
  const ranks: string[][] = [[], [], []];
  for (const name of names) {
    const at = folded(name).indexOf(wanted);
    if (at < 0) continue;
    const rank = at === 0 ? 0 : beginsWord(folded(name), wanted) ? 1 : 2;
    ranks[rank]!.push(name);
  }
  return ranks.flat().slice(0, MOST);
}

function beginsWord(name: string, wanted: string): boolean {
  for (let at = name.indexOf(wanted); at >= 0; at = name.indexOf(wanted, at + 1)) {
    if (at === 0 || !/[\p{L}\p{N}]/u.test(name[at - 1]!)) return true;
  }
  return false;
}

const folded = (text: string): string => text.normalize('NFC').toLocaleLowerCase('sv');
