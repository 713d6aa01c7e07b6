import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { SelectionReport } from '../../src/bridge';
import { sameReport, selectionReport } from '../../src/commands/selection';
import { situation } from './onText';

const nothing: SelectionReport = { bold: false, italic: false, highlight: false, bulletList: false, orderedList: false, inTable: false, heading: 0 };

const cases: readonly (readonly [string, Partial<SelectionReport>])[] = [
  ['a‸b', {}],
  ['**a‸b**', { bold: true }],
  ['*a‸b*', { italic: true }],
  ['==a‸b==', { highlight: true }],
  ['‹a **b** c›', { bold: true }],
  ['# a‸b', { heading: 1 }],
  ['##### a‸b', { heading: 5 }],
  ['###### a‸b', { heading: 0 }],
  ['- a‸b', { bulletList: true }],
  ['- [ ] a‸b', { bulletList: true }],
  ['1. a‸b', { orderedList: true }],
  ['A. a‸b\nB. c', { orderedList: true }],
  ['- a\n  1. b‸c', { orderedList: true }],
  ['> - a‸b', { bulletList: true }],
  ['| a‸b | c |\n| --- | --- |\n| d | e |', { inTable: true }],
  ['| **a‸b** | c |\n| --- | --- |', { inTable: true, bold: true }],
  ['```\na‸b\n```', {}],
];

for (const [marked, wanted] of cases) {
  test(`tells the formatting of ${JSON.stringify(marked)}`, () => {
    assert.deepEqual(selectionReport(situation(marked).state), { ...nothing, ...wanted });
  });
}

test('what is about to be typed counts at the caret', () => {
  const { state } = situation('a‸b');
  const mark = state.schema.marks.strong!.create();
  assert.equal(selectionReport(state.apply(state.tr.addStoredMark(mark))).bold, true);
});

test('reports are the same only when every fact is', () => {
  assert.equal(sameReport(nothing, { ...nothing }), true);
  assert.equal(sameReport(nothing, { ...nothing, heading: 2 }), false);
  assert.equal(sameReport(nothing, { ...nothing, inTable: true }), false);
});
