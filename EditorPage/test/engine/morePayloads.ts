/** Hostile texts made from parts: every handler, way of hiding a scheme, place for an address and surrounding markup, each with each. */
const run = "window.__ran('x')";

/** Elements that may run a handler by themselves, and what makes them. */
const carriers: ReadonlyArray<(attribute: string) => string> = [
  (attribute) => `<img src=x ${attribute}>`,
  (attribute) => `<svg ${attribute}><g ${attribute}></g></svg>`,
  (attribute) => `<details open ${attribute}>x</details>`,
  (attribute) => `text <b tabindex=1 autofocus ${attribute}>x</b> text`,
];

const handlers = [
  'onerror', 'onload', 'onfocus', 'onfocusin', 'ontoggle', 'onbegin', 'onclick', 'onmouseover', 'onpointerenter', 'onanimationstart',
  'ontransitionend', 'onbeforeinput', 'oninput', 'onpaste', 'onscroll', 'onwheel', 'ONERROR', 'onerror\n', 'x/onerror', 'data-x="1"onerror',
];

/** Ways to write a scheme so that a careless look misses it. */
const schemes = [
  'javascript:', 'JAVASCRIPT:', 'java\tscript:', 'java\nscript:', 'java\rscript:', ' javascript:', '\u0001javascript:', 'javascript&colon;',
  '&#x6a;avascript:', '&#0000106avascript:', 'javascript\t:', 'javascript:%0a', 'feed:javascript:', 'view-source:javascript:',
  'data:text/html,<script>', 'blob:vault://app/',
];

/** Where an address may stand. */
const places: ReadonlyArray<(address: string) => string> = [
  (address) => `[x](<${address}>)`,
  (address) => `[x][y]\n\n[y]: <${address}>`,
  (address) => `<a href="${address}">x</a>`,
  (address) => `![x](<${address}>)`,
  (address) => `<img src="${address}">`,
  (address) => `<svg><a href="${address}"><text>x</text></a></svg>`,
  (address) => `[[${address}]]`,
];

/** What may surround an image so that it is read in one way and shown in another. */
const surroundings: ReadonlyArray<(inside: string) => string> = [
  (inside) => `<svg><style>${inside}</style></svg>`,
  (inside) => `<svg><title>${inside}</title></svg>`,
  (inside) => `<svg><desc>${inside}</desc></svg>`,
  (inside) => `<svg></p><style><a id="</style>${inside}">`,
  (inside) => `<math><mi><style>${inside}</style></mi></math>`,
  (inside) => `<math><annotation-xml encoding="application/xhtml+xml">${inside}</annotation-xml></math>`,
  (inside) => `<math><mtext><table><mglyph><svg><mtext><style><path id="</style>${inside}">`,
  (inside) => `<table><td>${inside}</table>`,
  (inside) => `<select><option>${inside}</select>`,
  (inside) => `<textarea></textarea>${inside}<textarea>`,
  (inside) => `<title></title>${inside}`,
  (inside) => `<xmp></xmp>${inside}<xmp>`,
  (inside) => `<noembed></noembed>${inside}`,
  (inside) => `<plaintext>${inside}`,
  (inside) => `<!-- --!>${inside}-->`,
  (inside) => `<!doctype html>${inside}`,
  (inside) => `<a title="${'`'}">${inside}</a>`,
  (inside) => `<template shadowroot=open>${inside}</template>`,
  (inside) => `<frameset>${inside}</frameset>`,
  (inside) => `- <div>\n\n  ${inside}\n\n  </div>`,
  (inside) => `> | a |\n> | - |\n> | ${inside} |`,
  (inside) => `[^n]\n\n[^n]: ${inside}`,
  (inside) => `%% ${inside} %%`,
  (inside) => `==${inside}==`,
  (inside) => `---\nalias: "${inside}"\n---\n`,
  (inside) => `+++\nalias = "${inside}"\n+++\n`,
  (inside) => `\`\`\`mermaid\ngraph TD; A["${inside}"]\n\`\`\``,
  (inside) => `$\\text{${inside}}$`,
  (inside) => `![[x|${inside}]]`,
  (inside) => `![x](x.png "${inside.replace(/"/g, '&quot;')}")`,
];

const images = [`<img src=x onerror="${run}">`, `<svg onload="${run}"></svg>`];

export const morePayloads: readonly string[] = [
  ...carriers.flatMap((carrier) => handlers.map((handler) => carrier(`${handler}="${run}"`))),
  ...places.flatMap((place) => schemes.map((scheme) => place(`${scheme}${run}`))),
  ...surroundings.flatMap((around) => images.map(around)),
];
