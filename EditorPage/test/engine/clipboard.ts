/** Copy and paste through the engine's own clipboard events. */
import { editor, expect, expectEqual, open, paste, surface, turn, type, type Recorder } from './harness';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

const CELLS = '| a | b |\n| - | - |\n| c | d |\n';

/** A range as a spreadsheet program copies it. */
const CALC_RANGE = `<table cellspacing="0" border="0"><colgroup span="2" width="85"></colgroup>
<tr><td height="17" align="left">Vara</td><td align="left">Pris</td></tr>
<tr><td height="17" align="left">Kaffe</td><td align="right" sdval="12.5" sdnum="1053;">12,5</td></tr>
<tr><td height="17" align="left">Te</td><td align="right" sdval="9" sdnum="1053;">9</td></tr></table>`;

/** A paragraph of a list as a word processor copies it. */
const listParagraph = (level: number, marker: string, text: string): string =>
  `<p class=MsoListParagraph style='margin-left:36pt;text-indent:-18pt;mso-list:l0 level${level} lfo1'><![if !supportLists]>` +
  `<span style='font-family:Symbol'><span style='mso-list:Ignore'>${marker}<span style='font:7.0pt "Times New Roman"'>&nbsp;&nbsp; </span></span></span>` +
  `<![endif]>${text}<o:p></o:p></p>\n`;

const WORD_LISTS = [
  '<html xmlns:o="urn:schemas-microsoft-com:office:office"><body><!--StartFragment--><p class=MsoNormal>Före<o:p></o:p></p>\n',
  listParagraph(1, '·', 'ett'),
  listParagraph(1, '·', '<b>två</b>'),
  listParagraph(2, '3.', 'in'),
  listParagraph(2, '4.', 'mer'),
  listParagraph(1, '·', 'tre'),
  listParagraph(1, '1)', 'a'),
  '<!--EndFragment--></body></html>',
].join('');

/** Note with the caret at its end, clipboard, and the note afterwards. */
const pastes: readonly (readonly [string, Record<string, string>, string])[] = [
  ['a\n', { 'text/plain': ' **b** c' }, 'a **b** c\n'],
  ['a\n', { 'text/plain': '# R\n\n* x\n* y\n\n1) z\n' }, 'a\n\n# R\n\n* x\n* y\n\n1) z\n'],
  ['```\nx\n```\n', { 'text/plain': '**b**\nc' }, '```\nx**b**\nc\n```\n'],
  ['a\n', { 'text/plain': 'x\ty\n1\t2\n' }, 'a\n\n| x | y |\n| - | - |\n| 1 | 2 |\n'],
  [CELLS, { 'text/plain': '1\t2\n3\t4\n' }, '| a | b | |\n| - | - | - |\n| c | 1 | 2 |\n| | 3 | 4 |\n'],
  [CELLS, { 'text/plain': 'x\n\ny' }, '| a | b |\n| - | - |\n| c | dx y |\n'],
  ['a\n', { 'text/html': '<b style="font-weight:normal"><p>\n  Hej <span style="font-weight:700">du</span>\n</p></b>' }, 'aHej **du**\n'],
  ['a\n', { 'text/html': '<ul>\n <li>x</li>\n <li><i>y</i></li></ul>' }, 'a\n\n- x\n- *y*\n'],
  ['a\n', { 'text/html': '<p>b<script>c</script></p>' }, 'ab\n'],
  ['', { 'text/html': '<table>\n<tr><th><p>\n A</p>\n</th><th><p>B</p></th></tr><tr><td><p>1</p><p>2</p></td><td><ul><li>x</li><li>y | z</li></ul></td></tr></table>' }, '| A | B |\n| - | - |\n| 1 2 | x y \\| z |'],
  ['', { 'text/html': '<table><caption>C</caption><tr><td>a<br>b</td><td><table><tr><td>d</td><td>e</td></tr></table></td></tr></table>' }, 'C\n\n| a b | d e |\n| - | - |'],
  ['a\n', { 'text/html': '<table><tr><td> b | c</td></tr></table>' }, 'ab | c\n'],
  ['', { 'text/html': '<ul><li><input type="checkbox" disabled> b</li><li><p><input type="checkbox" checked> c</p></li><li>d</li></ul><input value="e">' }, '- [ ] b\n- [x] c\n- d'],
  ['', { 'text/html': '<pre class="x"><code class="hljs language-js">let a;\n  b</code></pre>' }, '```js\nlet a;\n  b\n```'],
  ['', { 'text/html': '<p><a href="https://e.org/?a=1&amp;b=2&amp;amp;c">d</a> A&amp;B <img src="f.png" alt="g"> h</p>' }, '[d](https://e.org/?a=1&b=2\\&amp;c) A&B ![g](f.png) h'],
  ['', { 'text/plain': 'x\ty\nz "q"\t"1 ""2""\n3"\n"b"\t\n' }, '| x | y |\n| - | - |\n| z "q" | 1 "2" 3 |\n| "b" | |'],
  ['', { 'text/html': CALC_RANGE }, '| Vara | Pris |\n| - | -: |\n| Kaffe | 12,5 |\n| Te | 9 |'],
  ['', { 'text/html': '<table><tr><th align="center">a</th><th>b</th></tr></table>' }, '| a | b |\n| :-: | - |'],
  ['', { 'text/html': WORD_LISTS }, 'Före\n\n- ett\n- **två**\n\n  3. in\n  4. mer\n- tre\n\n1. a'],
  ['a\n', { 'text/html': '<details><summary>S</summary>b</details>' }, 'aS\n\nb\n'],
];

const pasteTests: Test[] = pastes.map(([before, clipboard, after]) => [
  `pasting ${JSON.stringify(clipboard)} into ${JSON.stringify(before)}`,
  async (recorder) => {
    open(before);
    await turn();
    paste(clipboard);
    await turn();
    expectEqual(recorder.text, after, 'after the paste');
    editor().exec('undo');
    await turn();
    expectEqual(recorder.text, before, 'after undo');
  },
]);

/** What a copy of the current selection puts on the clipboard. */
function copied(kind: string): string {
  const clipboardData = new DataTransfer();
  surface().dispatchEvent(new ClipboardEvent('copy', { clipboardData, bubbles: true, cancelable: true }));
  return clipboardData.getData(kind);
}

async function selectAll(): Promise<void> {
  document.execCommand('selectAll');
  // The engine tells about a new selection in a turn of its own.
  await new Promise((resolve) => requestAnimationFrame(resolve));
  await turn();
}

/** Note with the caret at its end, text to be taken letter by letter, and the note afterwards. */
const literal: readonly (readonly [string, string, string])[] = [
  ['a\n', ' **b** [c](d)', 'a \\*\\*b\\*\\* \\[c](d)\n'],
  ['a\n\nb\n', '# c\n\n- d', 'a\n\nb# c\n\n\\- d\n'],
  ['- a\n', '1. b', '- a1. b\n'],
  ['```\nx\n```\n', '**b**\n\nc', '```\nx**b**\n\nc\n```\n'],
  [CELLS, 'x|y\n\nz', '| a | b |\n| - | - |\n| c | dx\\|y z |\n'],
];

const literalTests: Test[] = literal.map(([before, text, after]) => [
  `pasting ${JSON.stringify(text)} letter by letter into ${JSON.stringify(before)}`,
  async (recorder) => {
    open(before);
    await turn();
    editor().pasteText(text);
    await turn();
    expectEqual(recorder.text, after, 'after the paste');
    editor().exec('undo');
    await turn();
    expectEqual(recorder.text, before, 'after undo');
  },
]);

export const clipboardTests: Test[] = [
  ...pasteTests,
  ...literalTests,
  ['a long text on an empty line at the end joins the note as it is, as one step, and only what is seen of it is drawn', async (recorder) => {
    delete window.webkit!.messageHandlers!.edited;
    const long = `${'# Rubrik\n\n*   punkt\n*   till\n\nEtt __stycke__ av något slag.\n\n'.repeat(3_000)}sist`;
    open('');
    await turn();
    paste({ 'text/plain': long });
    await turn();
    expectEqual(recorder.text === long, true, 'the text is what was pasted');
    expect(surface().childElementCount < 3_000, `${surface().childElementCount} blocks are drawn`);
    expect(surface().lastElementChild!.contains(getSelection()!.focusNode), 'the caret is at its end');
    type('!');
    await turn();
    expectEqual(recorder.text === `${long}!`, true, 'what is typed next');
    editor().exec('undo');
    editor().exec('undo');
    await turn();
    expectEqual(recorder.text, '', 'after undo');
    editor().exec('redo');
    await turn();
    expectEqual(recorder.text === long, true, 'after redo');
  }],
  ['a long text is pasted below what is there, and in a list into the list', async (recorder) => {
    delete window.webkit!.messageHandlers!.edited;
    const long = 'Ett stycke.\n\n'.repeat(2_000).trimEnd();
    open('före\r\n');
    document.execCommand('insertParagraph');
    await turn();
    paste({ 'text/plain': long });
    await turn();
    expectEqual(recorder.text!.startsWith('före\r\n\r\nEtt stycke.\r\n\r\nEtt'), true, 'with the line ends of the note');
    expectEqual(recorder.text!.split('Ett stycke.').length, 2_001, 'paragraphs');

    open('- ett\n');
    document.execCommand('insertParagraph');
    document.execCommand('insertParagraph');
    await turn();
    const before = recorder.text!;
    paste({ 'text/plain': 'y'.repeat(20_000) });
    await turn();
    expectEqual(recorder.text!.trimEnd().length, before.trimEnd().length + 2 + 20_000, `pasted below a list that reads ${JSON.stringify(before)}`);
  }],
  ['a copied note is its own text', async () => {
    open('*  a\n*  b\n\nc __d__ [[E|f]]\n');
    await selectAll();
    expectEqual(copied('text/plain').trimEnd(), '*  a\n*  b\n\nc __d__ [[E|f]]', 'copied text');
  }],
  ['what was copied from a note comes back as it was', async (recorder) => {
    open('a [[D|e]] $x$ ==y== ~~z~~\n');
    await selectAll();
    const html = copied('text/html');
    open('');
    await turn();
    paste({ 'text/html': html, 'text/plain': 'q' });
    await turn();
    expectEqual(recorder.text?.trimEnd(), 'a [[D|e]] $x$ ==y== ~~z~~', 'pasted');
  }],
];
