/** Turns measured rounds into rows, and rows into the printed table. */
import { median } from './statistics.mjs';

/**
 * @typedef {object} Case  One line of the table.
 * @property {string} name
 * @property {[contender: string, value: string]} ours  what is compared ...
 * @property {[contender: string, value: string]} [base]  ... with what
 * @property {string} [baseName]  what the base is called in the table, if not by its contender's name
 * @property {number} [reach]  the ratio to stay within; without one the line is for information
 * @property {number} [most]   the value itself to stay within, where there is no base
 * @property {string} [unit]   "ms" unless told
 */

/** Medians, minima, ratio and verdict of every case. */
export function rowsOf(cases, results) {
  return cases.map((wanted) => {
    const { name, ours, base, reach = wanted.most ?? null, unit = 'ms' } = wanted;
    const mine = seriesOf(results, ...ours);
    const theirs = base ? seriesOf(results, ...base) : null;
    const ratio = theirs && median(mine) / median(theirs);
    return {
      case: name,
      ours: median(mine),
      base: theirs && median(theirs),
      oursMinimum: Math.min(...mine),
      baseMinimum: theirs && Math.min(...theirs),
      baseName: base ? (wanted.baseName ?? base[0]) : '-',
      unit,
      ratio,
      reach,
      verdict: reach === null ? 'info' : (ratio ?? median(mine)) <= reach ? 'reached' : 'missed',
    };
  });
}

function seriesOf(results, contender, value) {
  const series = results[contender]?.[value];
  if (!series) throw new Error(`"${contender}" did not measure "${value}"`);
  return series;
}

const columns = [
  ['case', (row) => row.case],
  ['ours', (row) => quantity(row.ours, row.unit)],
  ['base', (row) => (row.base === null ? '-' : quantity(row.base, row.unit))],
  ['ratio', (row) => row.ratio?.toFixed(2) ?? '-'],
  ['reach', (row) => reachText(row)],
  ['verdict', (row) => row.verdict],
  ['base is', (row) => row.baseName],
];

function reachText({ reach, base, unit }) {
  if (reach === null) return '-';
  return base === null ? quantity(reach, unit) : reach.toFixed(2);
}

function quantity(value, unit) {
  return `${value.toFixed(value < 10 ? 2 : value < 100 ? 1 : 0)} ${unit}`;
}

/** The rows as a Markdown table, padded so that it reads well in a terminal too. */
export function formatTable(rows) {
  const lines = [columns.map(([title]) => title), ...rows.map((row) => columns.map(([, text]) => text(row)))];
  const widths = columns.map((_, i) => Math.max(...lines.map((line) => line[i].length)));
  const leftAligned = new Set(['case', 'verdict', 'base is']);
  const isLeft = columns.map(([title]) => leftAligned.has(title));
  const format = (cells) =>
    `| ${cells.map((cell, i) => (isLeft[i] ? cell.padEnd(widths[i]) : cell.padStart(widths[i]))).join(' | ')} |`;
  const rule = `|${widths.map((width, i) => (isLeft[i] ? '-'.repeat(width + 2) : `${'-'.repeat(width + 1)}:`)).join('|')}|`;
  return [format(lines[0]), rule, ...lines.slice(1).map(format)].join('\n');
}
