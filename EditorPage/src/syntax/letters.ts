/** Letter labels of list items: 1 is "A", 26 is "Z", 27 is "AA". */
export function letterLabel(number: number): string {
  let label = '';
  for (let rest = number; rest > 0; rest = Math.floor((rest - 1) / 26)) {
    label = String.fromCharCode(65 + ((rest - 1) % 26)) + label;
  }
  return label;
}

/** The number of a letter label, 0 when it is none. */
export function letterNumber(label: string): number {
  if (!/^[A-Z]{1,2}$/.test(label)) return 0;
  return [...label].reduce((sum, letter) => sum * 26 + letter.charCodeAt(0) - 64, 0);
}

/** What stands before the text of a letter item. */
const letterMarker = /^([A-Z]{1,2})\.(?: +|$)/;

/** The number that a line begins with when it is written as a letter item, and how long its marker is. */
export function readLetterMarker(line: string): { number: number; length: number } | null {
  const match = letterMarker.exec(line);
  return match ? { number: letterNumber(match[1]!), length: match[0].length } : null;
}
