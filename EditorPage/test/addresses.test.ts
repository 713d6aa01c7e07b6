import assert from 'node:assert/strict';
import { test } from 'node:test';
import { embedSource, imageSource, isPictureName, mayOpen, videoId, videoPlayer } from '../src/addresses';

const base = 'vault://app/index.html';

test('a picture below assets is fetched from the page itself', () => {
  for (const [address, src] of [
    ['assets/Bild%201.png', 'vault://app/assets/Bild%201.png'],
    ['assets/Bild 1.png', 'vault://app/assets/Bild%201.png'],
    ['./assets/a/b.png', 'vault://app/assets/a/b.png'],
    ['/assets/a.png', 'vault://app/assets/a.png'],
    ['assets/100 %.png', 'vault://app/assets/100%20%25.png'],
    ['assets/å.png', 'vault://app/assets/%C3%A5.png'],
  ] as const) {
    assert.deepEqual(imageSource(address, base), { kind: 'bucket', src }, address);
  }
});

test('a picture that climbs, hides a separator or lies elsewhere is not fetched', () => {
  for (const address of [
    "", "bild.png", "../bild.png", "assets/../../x.png", "assets/..%2F..%2Fx.png", "assets/%2e%2e/x.png",
    "assets/.%2E/x.png", "assets\\x.png", "assets/..%5Cx.png", "assets/x%00.png", "file:///etc/passwd", "vault://app/index.html",
    'javascript:alert(1)', 'java\tscript:alert(1)', 'data:text/html,x', 'assets/', 'index.js',
  ]) {
    assert.deepEqual(imageSource(address, base), { kind: 'blocked' }, address);
  }
});

test('a remote picture is known as remote and an inline picture is shown', () => {
  assert.equal(imageSource('https://example.org/a.png', base).kind, 'remote');
  assert.equal(imageSource('HTTP://example.org/a.png', base).kind, 'remote');
  assert.equal(imageSource('//example.org/a.png', base).kind, 'remote');
  assert.equal(imageSource('data:image/png;base64,AAAA', base).kind, 'data');
});

test('an embed by bare name lies in assets, whatever characters its name has', () => {
  assert.deepEqual(embedSource('Bild #1.png', base), { kind: 'bucket', src: 'vault://app/assets/Bild%20%231.png' });
  assert.deepEqual(embedSource('assets/a.png', base), { kind: 'bucket', src: 'vault://app/assets/a.png' });
  assert.deepEqual(embedSource('../a.png', base), { kind: 'blocked' });
  assert.deepEqual(embedSource('assets/../../a.png', base), { kind: 'blocked' });
});

test('video addresses give their id, and look-alikes none', () => {
  for (const address of [
    'https://www.youtube.com/watch?v=dQw4w9WgXcQ', 'https://youtu.be/dQw4w9WgXcQ?t=3', 'https://youtube.com/shorts/dQw4w9WgXcQ',
    'http://m.youtube.com/watch?x=1&v=dQw4w9WgXcQ', ' https://www.youtube-nocookie.com/embed/dQw4w9WgXcQ ',
  ]) {
    assert.equal(videoId(address), 'dQw4w9WgXcQ', address);
  }
  for (const address of [
    'https://www.youtube.com.example.org/watch?v=dQw4w9WgXcQ', 'https://www.youtube.com/watch?v="><script>', 'youtube', '',
    'javascript://youtube.com/watch?v=dQw4w9WgXcQ', 'https://www.youtube.com/', 'https://youtu.be/a/b',
  ]) {
    assert.equal(videoId(address), null, address);
  }
  assert.equal(videoPlayer('dQw4w9WgXcQ'), 'https://www.youtube-nocookie.com/embed/dQw4w9WgXcQ?autoplay=1&rel=0');
});

test('links open unless their scheme could run or read something', () => {
  for (const href of ['https://example.org', 'mailto:a@b.se', 'Projekt%20X/Plan', 'Plan#Mål', '#Mål', '/assets/a.pdf', 'file:///a', 'Not: 2']) {
    assert.equal(mayOpen(href), true, href);
  }
  for (const href of [
    'javascript:x', 'JaVaScRiPt:x', '\u0001javascript:x', 'java\nscript:x', 'vbscript:x', 'data:text/html,x', 'blob:x',
    'about:blank', 'view-source:x', 'vault://app/index.html', '', '  ',
  ]) {
    assert.equal(mayOpen(href), false, href);
  }
});

test('a picture is known by its name', () => {
  assert.equal(isPictureName('Bild.PNG'), true);
  assert.equal(isPictureName('Bild.png.md'), false);
});
