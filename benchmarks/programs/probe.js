/**
 * Runs in the measured page before its own scripts. Stands in for the host: takes the page's messages, and measures what a
 * user would wait for. Every answer is a line on the console that begins with "bench:".
 */
'use strict';

{
  const framesToSettle = 20;
  const framesToRest = 60;
  const scrollFrames = 250;
  const answer = (value) => console.log(`bench:${JSON.stringify(value)}`);

  let text = '';
  let edits = []; // told since, and not yet made to the text: that is the host's work and not the page's
  let keyAt = null; // when the key was pressed whose change is awaited
  let keyAnswered = () => {};
  const told = () => {
    if (keyAt !== null) keyAnswered(performance.now() - keyAt);
  };
  const takeWhole = (changed) => {
    changed.charCodeAt(changed.length >> 1); // whoever takes the text needs it in one piece
    told();
    text = changed;
    edits = [];
  };
  const takeEdit = (edit) => {
    told();
    edits.push(edit);
  };
  const textNow = () => {
    for (const { from, to, insert } of edits.splice(0)) text = text.slice(0, from) + insert + text.slice(to);
    return text;
  };
  const receivers = {
    ready: () => answer({ ready: true }),
    changed: takeWhole,
    edited: takeEdit,
    selection: () => {},
    openLink: () => {},
  };
  const messageHandlers = Object.fromEntries(
    Object.entries(receivers).map(([name, postMessage]) => [name, { postMessage }]),
  );
  window.webkit = { messageHandlers };
  window.addEventListener('keydown', (event) => (keyAt = event.timeStamp), true);

  /** Resolves once a frame has been laid out and painted. */
  const frame = () =>
    new Promise((resolve) =>
      requestAnimationFrame(() => {
        const channel = new MessageChannel();
        channel.port1.onmessage = resolve;
        channel.port2.postMessage(0);
      }),
    );

  async function frames(count) {
    for (let i = 0; i < count; i++) await frame();
  }

  const editable = () => document.querySelector('[contenteditable="true"]');

  function textNodes(root) {
    return document.createTreeWalker(root, NodeFilter.SHOW_TEXT);
  }

  /** Whether the note's beginning is there and the lower part of the window shows text of it too. */
  function isShown(beginning) {
    const root = editable();
    if (!root) return false;
    const walker = textNodes(root);
    let start = '';
    while (start.length < beginning.length + 10 && walker.nextNode()) start += walker.currentNode.data;
    return start.includes(beginning) && [0.6, 0.65, 0.7, 0.75, 0.8].some(hasTextAt);
  }

  function hasTextAt(height) {
    const element = document.elementFromPoint(innerWidth / 2, innerHeight * height);
    return element !== null && element !== editable() && editable().contains(element) && element.textContent.trim() !== '';
  }

  /** Measures from the call until the note is on the screen. */
  async function show(note, beginning) {
    await frame();
    text = note;
    edits = [];
    const start = performance.now();
    window.VaultEditor.setContent(note);
    do await frame();
    while (!isShown(beginning));
    answer({ painted: performance.now() - start });
  }

  /** A short note, and a moment of rest: what is measured next is not the page's first. */
  async function warmUp() {
    window.VaultEditor.setContent('# Varm\n\nEn *kort* text.\n\n- ett\n- två\n');
    await frames(framesToRest);
    answer({ warm: true });
  }

  function scroller() {
    for (let element = editable(); element; element = element.parentElement)
      if (element.scrollHeight > element.clientHeight + 1 && getComputedStyle(element).overflowY !== 'visible') return element;
    return document.scrollingElement;
  }

  const isBlock = (element) => getComputedStyle(element).display !== 'inline';

  /** The point at the end of the first line of the prose that `node` begins, or null when it is no visible prose. */
  function proseAt(node) {
    let block = node.parentElement;
    while (!isBlock(block)) block = block.parentElement;
    const isProse = /^\p{Lu}[^|]{80,}\.$/u.test(block.textContent.trim());
    if (!isProse || node.data.length < 20 || block.closest('li, blockquote, table, pre')) return null;
    const range = document.createRange();
    range.selectNodeContents(node);
    const line = range.getClientRects()[0];
    const isVisible = line && line.top > innerHeight * 0.2 && line.bottom < innerHeight * 0.8;
    return isVisible ? { x: line.right - 8, y: (line.top + line.bottom) / 2, isLineEnd: true } : null;
  }

  /** The point in the middle of the first line of any text that is visible. */
  function textAt(node) {
    if (node.data.trim().length < 10) return null;
    const range = document.createRange();
    range.selectNodeContents(node);
    const line = [...range.getClientRects()].find(({ top, bottom }) => top > innerHeight * 0.2 && bottom < innerHeight * 0.8);
    return line ? { x: (line.left + line.right) / 2, y: (line.top + line.bottom) / 2 } : null;
  }

  function find(at) {
    const walker = textNodes(editable());
    while (walker.nextNode()) {
      const point = at(walker.currentNode);
      if (point) return point;
    }
    return null;
  }

  /** Waits until the page has put in all of the note that it puts in by itself. */
  async function settle(box) {
    for (let height = -1; height !== box.scrollHeight; ) {
      height = box.scrollHeight;
      await frames(framesToSettle);
    }
  }

  /** Scrolls to the middle of the note and tells where its prose can be clicked. */
  async function goToMiddle() {
    const box = scroller();
    await settle(box);
    box.scrollTop = box.scrollHeight / 2;
    for (let tries = 0; tries < 40; tries++) {
      await frames(framesToSettle);
      const point = find(proseAt) ?? (tries > 3 ? find(textAt) : null);
      if (point) return answer({ point });
      box.scrollTop += innerHeight / 2;
    }
    answer({ error: 'no prose to click in the middle of the note' });
  }

  /** How much the page's script holds, in megabytes, once what it no longer needs is gone. */
  async function memory() {
    await frames(framesToRest);
    for (let round = 0; round < 3; round++) window.gc?.();
    answer({ memory: performance.memory.usedJSHeapSize / 1e6 });
  }

  /** Scrolls from the top to the end in steps of at least `step` window heights, and tells how long the frames took. */
  async function scrollThrough(step) {
    const box = scroller();
    box.scrollTop = 0;
    await frames(framesToSettle);
    const by = Math.max(step * innerHeight, box.scrollHeight / scrollFrames);
    const taken = [];
    for (let last = performance.now(), top = -1; top < box.scrollTop && taken.length < 2 * scrollFrames; ) {
      top = box.scrollTop;
      box.scrollTop += by;
      await frame();
      taken.push(performance.now() - last);
      last = performance.now();
    }
    await frames(framesToSettle);
    answer({ frames: taken });
  }

  /** Answers once the page has reported the key that is about to be pressed and has painted it. */
  async function awaitKey() {
    keyAt = null;
    const reported = new Promise((resolve) => (keyAnswered = resolve));
    answer({ waiting: true });
    const changed = await reported;
    await frame();
    answer({ changed, frame: performance.now() - keyAt });
  }

  /** Tells whether the last reported text is the note with `typed` put in at one place and nothing else changed. */
  function check(note, typed) {
    const reported = textNow();
    const at = reported.indexOf(typed);
    const isExact = at >= 0 && reported.slice(0, at) + reported.slice(at + typed.length) === note;
    answer(isExact ? { exact: true } : { error: `the text is not the note with what was typed (found at ${at})` });
  }

  /** Tells whether the last reported text holds `typed` once; the rest is as the page writes it. */
  function checkRewritten(note, typed) {
    const found = textNow().split(typed).length - 1;
    answer(found === 1 && text !== note ? { rewritten: true } : { error: `what was typed stands in the text ${found} times` });
  }

  window.bench = { show, warmUp, memory, goToMiddle, scrollThrough, awaitKey, check, checkRewritten };
}
