import { existsSync, readFileSync, readdirSync } from 'node:fs';
import { createRequire } from 'node:module';
import path from 'node:path';
import { gunzipSync } from 'node:zlib';

/** A note to try things on. */
export interface Sample {
  name: string;
  text: string;
}

const root = process.cwd();
const require = createRequire(path.join(root, 'package.json'));

/** The examples of the CommonMark specification, 0.31.2. */
export function commonMarkExamples(): Sample[] {
  const spec = require('commonmark-spec') as { tests: Array<{ markdown: string; number: number }> };
  return spec.tests.map(({ markdown, number }) => ({
    name: `CommonMark ${number}`,
    text: markdown.replace(/→/g, '\t'),
  }));
}

/** What GFM adds, in the shapes that its extensions differ in. */
export function gfmExamples(): Sample[] {
  const texts = [
    '| foo | bar |\n| --- | --- |\n| baz | bim |\n',
    '| abc | defghi |\n:-: | -----------:\nbar | baz\n',
    '| f\\|oo  |\n| ------ |\n| b `\\|` az |\n| b **\\|** im |\n',
    '| abc | def |\n| --- | --- |\n| bar | baz |\n> bar\n',
    '| abc | def |\n| --- | --- |\n| bar | baz |\nbar\n\nbar\n',
    '| abc | def |\n| --- |\n| bar |\n',
    '| abc | def |\n| --- | --- |\n| bar |\n| bar | baz | boo |\n',
    '| abc | def |\n| --- | --- |\n',
    'text\n| a |\n| - |\n| b |\n',
    '- | a | b |\n  |---|---|\n  | c | d |\n',
    '> | a |\n> | - |\n> | *b* |\n',
    '| a |\n| :- |\n|  |\n| [x](y) |\n',
    '- [ ] foo\n- [x] bar\n',
    '- [x] foo\n  - [ ] bar\n  - [x] baz\n- [ ] bim\n',
    '1. [ ] one\n2. [X] two\n\n   more\n',
    '* [ ]\n* [x]  two blanks\n* [y] no\n',
    '~~Hi~~ Hello, ~there~ world!\n',
    'This ~~has a\n\nnew paragraph~~.\n',
    'This will ~~~not~~~ strike.\n',
    'www.commonmark.org\n',
    'Visit www.commonmark.org/help for more information.\n',
    'Visit www.commonmark.org.\n\nVisit www.commonmark.org/a.b.\n',
    'www.google.com/search?q=Markup+(business)\n\n(www.google.com/search?q=Markup+(business))\n',
    'www.google.com/search?q=commonmark&hl=en\n\nwww.google.com/search?q=commonmark&hl;\n',
    'http://commonmark.org\n\n(Visit https://encrypted.google.com/search?q=Markup+(business))\n',
    'foo@bar.baz\n',
    'hello@mail+xyz.example is not valid, but hello+xyz@mail.example is.\n',
    'a.b-c_d@a.b\n\na.b-c_d@a.b.\n\na.b-c_d@a.b-\n\na.b-c_d@a.b_\n',
    'Here is a footnote reference,[^1] and another.[^longnote]\n\n[^1]: Here is the footnote.\n\n[^longnote]: Here is one with blocks.\n\n    Subsequent paragraphs.\n\n        { some.code }\n',
    '[^a]: one\n[^b]: two\n\nx[^b] y[^a] z[^c]\n',
  ];
  return texts.map((text, index) => ({ name: `GFM ${index + 1}`, text }));
}

function markdownBelow(folder: string): string[] {
  return readdirSync(folder, { withFileTypes: true }).flatMap((entry) => {
    const full = path.join(folder, entry.name);
    if (entry.isDirectory()) return markdownBelow(full);
    return entry.isFile() && /\.(md|markdown)(\.gz)?$/i.test(entry.name) ? [full] : [];
  });
}

function filesOf(folder: string): Sample[] {
  const textOf = (file: string) => (file.endsWith('.gz') ? gunzipSync(readFileSync(file)) : readFileSync(file)).toString('utf8');
  return markdownBelow(folder)
    .sort()
    .map((file) => ({ name: path.relative(folder, file), text: textOf(file) }));
}

/** Every Markdown file of the installed packages. */
export function packageFiles(): Sample[] {
  return filesOf(path.join(root, 'node_modules'));
}

/** Every Markdown file of the installed system's documentation, packed ones too. None where there is none. */
export function systemFiles(): Sample[] {
  const folder = '/usr/share/doc';
  return existsSync(folder) ? filesOf(folder) : [];
}

const notes: Record<string, string> = {
  empty: '',
  'one line feed': '\n',
  'blank lines only': '\n\n \n\t\n',
  'one word': 'word',
  'no final line end': 'a\n\nb',
  'three line ends last': 'a\n\nb\n\n\n',
  'blank lines first': '\n\n\na\n',
  'blank lines between': 'a\n\n\n\nb\n\n\nc\n',
  'blanks at line ends': 'a  \nb\\\nc  \n\nd \n',
  CRLF: '# A\r\n\r\nText *b*\r\n\r\n- x\r\n- y\r\n',
  'lone CR': 'a\rb\r\rc\r',
  'mixed line ends': 'a\r\nb\n\r\n- x\n- y\r\n\rend',
  'byte order mark': '\ufeff# A\n\ntext\n',
  'two byte order marks': '\ufeff\ufeff# A\n\n\ufefftext\n',
  'byte order mark and front matter': '\ufeff---\na: 1\n---\n\ntext\n',
  'front matter only': '---\na: 1\n---\n',
  'empty front matter': '---\n---\n\nx\n',
  'YAML front matter': '---\ntags: [a, b]\n---\n# T\n\nx\n',
  'TOML front matter': '+++\ntitle = "x"\n+++\n\nx\n',
  'unclosed front matter': '---\na: 1\n\ntext\n',
  'rule first': '---\n\ntext\n',
  'null character': 'a\0b\n\n    \0code\n',
  tabs: '-\ta\n\n\tb\n\n\t\tcode\n',
  'tab after marker': '>\tq\n>\n>\t\tcode\n',
  'wiki links': 'See [[Note|alias]], [[a#b]] and ![[img.png|300]] x\n',
  'wiki link in table': '| a | b |\n|---|---|\n| [[x\\|y]] | ![[z]] |\n',
  highlight: 'a ==high== b ==-a==b\n\n==**b**== c\n',
  'letter list': 'A. one\nB. *two*\nC. three\n\nend\n',
  'no letter list': 'A. Smith wrote\n\nB. Jones\n',
  'task list': '- [ ] a\n- [x] b\n- [ ]\n- plain\n\nend\n',
  'task with heading': '- [ ] # h\n- [x]\n\n  p\n',
  footnote: 'a[^1]\n\n[^1]: note\n\n    more\n',
  math: '$a_1*b*$ and $5 and $10\n\n$$\nx_1^2\n$$\n\nend\n',
  callout: '> [!note]- Title\n> body\n\nend\n',
  HTML: '<details>\n<summary>a</summary>\n\nb\n\n</details>\n\nx <kbd>K</kbd> y\n',
  'HTML comment': 'a <!-- b --> c\n\n<!-- d\n\ne -->\n\nf\n',
  'unclosed HTML': 'a\n\n<script>\n\nb\n',
  references: '[a][b] and [c] ![i][b]\n\n[b]: http://x "t"\n[c]: <http://y>\n',
  'definition of two lines': '[a]\n\n[a]: /url\n  "title"\n',
  'definition in a quote': '> [a]: /url\n>   "title"\n\n[a]\n',
  table: '|a|b|\n|-|:-:|\n|1|`x\\|y`|\n\nend\n',
  'ragged table': '| a | b |\n|---|---|\n| 1 |\n| 1 | 2 | 3 |\n',
  'table without pipes at the ends': 'a | b\n--- | :-:\n1 | 2\n',
  'other markers': '* a\n* b\n\n1) c\n2) d\n\n__s__ _e_\n',
  'setext headings': 'T\n=\n\nU\n---\n\na\nb  \nc\n===\n',
  'indented code': 'x\n\n    code\n\n      more\n\ny\n',
  'tilde fence': '~~~js {1}\na\n~~~\n\ny\n',
  'unclosed fence': 'a\n\n```\ncode\n\nmore\n',
  'empty fence': '```\n```\n\n``` js\n\n```\n',
  escapes: '1\\. a \\* b 2 * 3 a_b_c # x <y> & &amp; &copy; &#35;\n',
  'comments and tags': '%% hidden %%\n\nx #tag ^block-id\n',
  'empty constructs': '[]() ![]() [](<>) ** ____ `` ``` ```\n\n#\n\n-\n\n>\n',
  'deep quotes': `${'> '.repeat(40)}deep\n`,
  'deep lists': `${Array.from({ length: 20 }, (_, depth) => `${'  '.repeat(depth)}- level ${depth}`).join('\n')}\n`,
  'lazy lines': '> a\nb\n- c\nd\n',
  'lists beside each other': '- a\n\n* b\n\n1. c\n\n1) d\n',
  'loose list': '- a\n\n- b\n\n  c\n- d\n',
  Swedish: 'Å ä ö – “citat” och **fet**text, hälsa på[^å].\n\n[^å]: Ö\n',
  Chinese: '**中文**字 *強調*文字 ==標記==字\n',
  'emoji and combining': '👩‍👩‍👧 e\u0301 \u{1F600}**b**\n',
  'no break space': 'a\u00a0b \u00a0 c\n\n\u00a0\n',
  'lone surrogate': 'a \ud800 b\n',
  'line separators': 'a\u2028b\u2029c\u0085d\n',
  'form feed and vertical tab': 'a\fb\vc\n',
  addresses: 'http://x.se/å, www.x.se. <http://y> a@b.se <a@b.se>\n',
  'long line': `${'ord '.repeat(3000)}\n`,
  'five thousand items': `${Array.from({ length: 5000 }, (_, index) => `- item ${index} with *some* text`).join('\n')}\n`,
  'two thousand rows': `| n | text |\n|---|---|\n${Array.from({ length: 2000 }, (_, index) => `| ${index} | row |`).join('\n')}\n`,
};

/** Notes that are hard to keep. */
export function edgeNotes(): Sample[] {
  return Object.entries(notes).map(([name, text]) => ({ name: `edge: ${name}`, text }));
}

/** The same note with CRLF line ends, and with a byte order mark. */
export function variants({ name, text }: Sample): Sample[] {
  return [
    { name, text },
    { name: `${name} (CRLF)`, text: text.replace(/\r\n?|\n/g, '\r\n') },
    { name: `${name} (BOM)`, text: `\ufeff${text}` },
  ];
}

/** Every sample there is, in a long run those of the system too; in any other only every `step`-th of the packages. */
export function allSamples(step = 1): Sample[] {
  const isLong = Boolean(process.env.LONG);
  const files = packageFiles().filter((_, index) => isLong || index % step === 0);
  return [...commonMarkExamples(), ...gfmExamples(), ...edgeNotes(), ...files, ...(isLong ? systemFiles() : [])];
}
