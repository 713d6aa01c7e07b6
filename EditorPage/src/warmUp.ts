import { SourceDocument } from './source/SourceDocument';

/** A little of everything that notes hold. */
const sample = `---
namn: prov
---

# Rubrik

Ett stycke med **fet**, *kursiv*, ==markerad== och \`kod\`, en [länk](sida.md), [[Not|namn]] och https://example.org.

- punkt
  - under punkt
- [x] klar

1. ett
2. två[^a]

| a | b |
| - | -: |
| 1 | 2 |

> citat

\`\`\`js
kod
\`\`\`

$$
x
$$

<b>html</b>

[^a]: fotnot
`;

/** A note that the host has ready for the start comes sooner than this; in milliseconds. */
const START = 200;

/** Reads a short note once nothing else is to do, so that the first real one does not wait for the parser to be compiled. */
export function warmUp(): void {
  setTimeout(() => requestIdleCallback(() => SourceDocument.load(sample)), START);
}
