/** The page keeps its side of the contract with the host. */
import { NoteEditor } from '../../src/editor';
import { SourceDocument } from '../../src/source/SourceDocument';
import { edit, editor, expect, expectEqual, open, paste, surface, turn, type, type Recorder } from './harness';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

const press = (target: Element): void => {
  const box = target.getBoundingClientRect();
  const at = { bubbles: true, cancelable: true, clientX: box.x + box.width / 2, clientY: box.y + box.height / 2, button: 0, detail: 1 };
  target.dispatchEvent(new MouseEvent('mousedown', { ...at, buttons: 1 }));
  target.dispatchEvent(new MouseEvent('mouseup', at));
  target.dispatchEvent(new MouseEvent('click', at));
};

function find(selector: string): Element {
  const found = document.querySelector(`#editor ${selector}`);
  if (found === null) throw new Error(`no ${selector} in the note`);
  return found;
}

async function settle(recorder: Recorder): Promise<void> {
  await turn();
  recorder.clear();
}

export const bridgeTests: Test[] = [
  ['setContent reports no change', async (recorder) => {
    open('# Ett\n\ntext\n');
    open('\u2028två\r\n\r\n');
    await turn();
    expectEqual(recorder.of('changed'), [], 'changes');
  }],
  ['setContent with the shown text does nothing', async (recorder) => {
    open('ett\n');
    type('!');
    await settle(recorder);
    editor().setContent('ett!\n');
    editor().exec('undo');
    await turn();
    expectEqual(recorder.of('changed'), ['ett\n'], 'changes after undo');
  }],
  ['many edits in one task are one change', async (recorder) => {
    open('a\n');
    await settle(recorder);
    edit('b');
    edit('c');
    expect(recorder.of('changed').length <= 1, 'more than one change in the task');
    await turn();
    expectEqual(recorder.text, 'abc\n', 'text');
  }],
  ['letters typed faster than the screen is drawn stay in order', async (recorder) => {
    for (const [text, wanted] of [['## Rubrik', '## Rubrik'], ['- ett', '- ett'], ['> citat', '> citat'], ['**fet** text', '**fet** text']] as const) {
      open('');
      for (const letter of text) {
        type(letter);
        await Promise.resolve();
      }
      await turn();
      expectEqual(recorder.text, wanted, 'text');
    }
  }],
  ['a long note is reported as what has changed in it, and as a whole when asked', async (recorder) => {
    const note = 'Ett stycke med **fet** text och mer.\n\n'.repeat(1200);
    let text = '';
    let count = 0;
    window.webkit!.messageHandlers!.edited = {
      postMessage: (edit) => {
        text = text.slice(0, edit.from) + edit.insert + text.slice(edit.to);
        expectEqual([edit.count, edit.length], [++count, text.length], 'count and length');
      },
    };
    open(note);
    text = note;
    for (const step of ['a', 'b', ' ', '*c', '*']) {
      type(step);
      await turn();
    }
    editor().exec('heading', 2);
    editor().exec('undo');
    editor().exec('undo');
    expect(count >= 6, `${count} edits`);
    expectEqual(recorder.of('changed'), [], 'whole notes');
    editor().reportWhole();
    expectEqual(recorder.text === text, true, 'the edits give the whole text');
    editor().setContent(text);
    count = 0;
    type('!');
    await turn();
    expectEqual(count, 1, 'edits after the content was set anew');
  }],
  ['a note that is too long is not shown, and nothing of it can be changed', async (recorder) => {
    open('före\n');
    await settle(recorder);
    const text = 'Rad med åäö\n'.repeat(4_000_000);
    editor().setContent(text);
    expect(find('.too-long').textContent!.includes('48 miljoner tecken'), 'the notice says how long the note is');
    editor().focus();
    type('x');
    editor().exec('bulletList');
    editor().exec('undo');
    paste({ 'text/plain': 'x' });
    editor().setContent(text);
    await turn();
    expectEqual(recorder.of('changed'), [], 'changes');
    editor().reportWhole();
    expect(recorder.text === text, 'the whole note is another');
    open('efter\n');
    expect(surface().parentElement!.querySelector('.too-long') === null, 'the notice is gone');
    type('!');
    await turn();
    expectEqual(recorder.text, 'efter!\n', 'text');
  }],
  ['another note starts its own history', async (recorder) => {
    open('ett\n');
    type('!');
    await turn();
    open('något helt annat\n');
    await settle(recorder);
    editor().exec('undo');
    await turn();
    expectEqual(recorder.of('changed'), [], 'changes after undo');
  }],
  ['the same note changed elsewhere keeps what can be undone', async (recorder) => {
    const rest = 'ett stycke som står kvar\n\noch ett till som också gör det\n';
    open(`${rest}\nslut\n`);
    type('!');
    await settle(recorder);
    editor().setContent(`ny början\n\n${rest}\nslut!\n`);
    editor().exec('undo');
    await turn();
    expectEqual(recorder.text, `ny början\n\n${rest}\nslut\n`, 'text after undo');
  }],
  ['the selection is told once for each state', async (recorder) => {
    open('text\n');
    await settle(recorder);
    editor().exec('bold');
    await turn();
    editor().exec('bold');
    await turn();
    const bold = recorder.of('selection').map((body) => (body as { bold: boolean }).bold);
    expectEqual(bold, [true, false], 'bold');
  }],
  ['a clicked link goes to the host', async (recorder) => {
    open('[x](Plan%20B.md) och [[Not#Mål|n]] och <https://example.org>\n');
    await settle(recorder);
    for (const selector of ['[data-href="Plan%20B.md"]', '[data-wiki]', '[data-href="https://example.org"]']) press(find(selector));
    await turn();
    const wanted = [{ href: 'Plan%20B.md', wiki: false }, { href: 'Not#Mål', wiki: true }, { href: 'https://example.org', wiki: false }];
    expectEqual(recorder.of('openLink'), wanted, 'opened');
  }],
  ['nothing moves when the caret goes from block to block', async () => {
    open('# a\n\nb\n\n## c\n\n- d\n- e\n\n> ## f\n>\n> g\n\n1. h\n\n   i\n\n```\nj\n```\n\n- [ ] k\n\n| l |\n| - |\n\nA. m\nB. n\n\no\n');
    const blocks = [...surface().children];
    const tops = (): number[] => [...surface().children].map((block) => Math.round(block.getBoundingClientRect().top + scrollY));
    const settled = async (): Promise<number[]> => {
      for (let step = 0; step < 2; step++) await new Promise((resolve) => requestAnimationFrame(resolve));
      await turn();
      return tops();
    };
    const before = await settled();
    for (const [index, block] of blocks.entries()) {
      const text = document.createTreeWalker(block, NodeFilter.SHOW_TEXT).nextNode();
      if (text !== null) getSelection()?.collapse(text, 0);
      const after = await settled();
      expect(text === null || block.contains(getSelection()!.anchorNode), `the caret is not in block ${index}`);
      expectEqual(after, before, `tops with the caret in block ${index}`);
    }
  }],
  ['a link in drawn HTML goes to the host', async (recorder) => {
    open('<div><a href="Plan.md">x</a> <a href="javascript:1">y</a></div>\n\nslut\n');
    await settle(recorder);
    for (const link of surface().querySelectorAll('.drawing a')) press(link);
    await turn();
    expectEqual(recorder.of('openLink'), [{ href: 'Plan.md', wiki: false }], 'opened');
  }],
  ['a video is fetched only when its card is pressed', async (recorder) => {
    open('![](https://www.youtube.com/watch?v=dQw4w9WgXcQ)\n\nslut\n');
    await settle(recorder);
    expectEqual(document.querySelectorAll('iframe').length, 0, 'frames before');
    (find('.video button') as HTMLElement).click();
    const frame = find('.video iframe') as HTMLIFrameElement;
    expect(frame.src.startsWith('https://www.youtube-nocookie.com/embed/dQw4w9WgXcQ'), frame.src);
    open('');
    await turn();
    expectEqual(recorder.of('changed'), [], 'changes');
  }],
  ['formulas are drawn as soon as what draws them has come', async () => {
    open('a $x^2$ b\n\n$$\ny\n$$\n\nslut\n');
    await import(new URL('katex.js', document.baseURI).href);
    await turn();
    expectEqual(surface().querySelectorAll('.katex').length, 2, 'formulas');
  }],
  ['code is coloured by its language, and only in how it looks', async (recorder) => {
    open('```js\nconst x = 1;\n```\n\n```mermaid\nconst\n```\n\nslut\n');
    await import(new URL('lowlight.js', document.baseURI).href);
    for (let round = 0; round < 200 && !surface().querySelector('.hljs-keyword'); round++) await new Promise((resolve) => requestAnimationFrame(resolve));
    expectEqual([...surface().querySelectorAll('.hljs-keyword')].map((word) => word.textContent), ['const'], 'keywords');
    expectEqual(recorder.of('changed').length, 0, 'changes');
  }],
  ['the source of a formula is taken letter by letter', async (recorder) => {
    open('a $x$ b\n');
    await settle(recorder);
    find('.math-inline').dispatchEvent(new MouseEvent('dblclick', { bubbles: true }));
    const field = find('.inline-field') as HTMLInputElement;
    field.value = 'x^2';
    field.dispatchEvent(new InputEvent('input', { bubbles: true }));
    await turn();
    expectEqual(recorder.text, 'a $x^2$ b\n', 'text while the field is open');
    open('en annan not\n');
    await turn();
    expectEqual(recorder.text, 'a $x^2$ b\n', 'text after leaving the note');
  }],
  ['front matter and drawn blocks are shown without their source until the caret is there', async () => {
    open('---\ntitel: x\n---\n\n$$\ny\n$$\n\nslut\n');
    await turn();
    const hidden = [...surface().querySelectorAll('.drawn > pre')].map((pre) => getComputedStyle(pre).display);
    expectEqual(hidden, ['none', 'none'], 'source');
    expectEqual(find('.summary').textContent, 'Egenskaper: titel', 'summary');
  }],
  ['a blank in an address shows the brackets around it, and typing goes on behind the blank', async (recorder) => {
    for (const [before, after] of [['a <http://x.se> c\n', 'a <http: y//x.se> c\n'], ['a http://x.se c\n', 'a http: y//x.se c\n']]) {
      open(before!);
      await turn();
      getSelection()!.collapse(find('a').firstChild, 5);
      await turn();
      for (const letter of ' y') {
        type(letter);
        await turn();
      }
      expectEqual(recorder.text, after, 'text');
      expectEqual(surface().querySelector('a[href="http://x.se"]'), null, 'link');
    }
  }],
  ['keys written as tags are shown as keys, and the tags where the caret is', async () => {
    open('a <kbd>B</kbd> c\n\nslut\n');
    await turn();
    const shown = () => [...surface().querySelectorAll('.html-tag')].map((tag) => getComputedStyle(tag).display);
    expectEqual([surface().querySelector('kbd')?.textContent, shown()], ['B', ['none', 'none']], 'elsewhere');
    getSelection()!.collapse(find('kbd').firstChild, 1);
    await new Promise((resolve) => requestAnimationFrame(resolve));
    await turn();
    expectEqual(shown(), ['inline', 'inline'], 'at the caret');
  }],
  ['a clicked task box is checked in the text', async (recorder) => {
    open('- [ ] a\n- [x] b\n');
    await settle(recorder);
    (find('.task-box') as HTMLElement).click();
    await turn();
    expectEqual(recorder.text, '- [x] a\n- [x] b\n', 'text');
  }],
  ['words are reported even when their text cannot be brought in step', async (recorder) => {
    const root = document.body.appendChild(document.createElement('div'));
    const other = new NoteEditor(root);
    other.setContent('* ett\n');
    const apply = SourceDocument.prototype.apply;
    SourceDocument.prototype.apply = () => {
      throw new Error('as the test wants it');
    };
    try {
      other.exec('wikilink', 'Not');
      await turn();
    } finally {
      SourceDocument.prototype.apply = apply;
      other.view.destroy();
      root.remove();
    }
    expectEqual(recorder.text, '- [[Not]]ett\n', 'text');
  }],
  ['setTheme names the theme on the root', async () => {
    editor().setTheme('dark');
    expectEqual(document.documentElement.dataset['theme'], 'dark', 'theme');
    editor().setTheme('light');
    expectEqual(document.documentElement.dataset['theme'], 'light', 'theme');
  }],
  ['zoom and theme sizes reach the text', async () => {
    open('text\n');
    const root = document.documentElement.style;
    root.setProperty('--editor-zoom', '2.0');
    root.setProperty('--body-size', '9.0px');
    const size = getComputedStyle(find('p')).fontSize;
    root.removeProperty('--editor-zoom');
    root.removeProperty('--body-size');
    expectEqual(size, '24px', 'font size');
  }],
  ['the note is a named text field in Swedish', async () => {
    const { lang, spellcheck } = surface();
    const [role, multiline, label] = ['role', 'aria-multiline', 'aria-label'].map((name) => surface().getAttribute(name));
    expectEqual([role, lang, spellcheck, multiline, label],
      ['textbox', 'sv', true, 'true', 'Anteckning'], 'role and name');
  }],
];
