import type { Parent, PhrasingContent } from 'mdast';
import type { CompileContext, Extension as FromMarkdown, Token } from 'mdast-util-from-markdown';
import type { Handle, Options as ToMarkdown } from 'mdast-util-to-markdown';
import { splice } from 'micromark-util-chunked';
import { classifyCharacter } from 'micromark-util-classify-character';
import { resolveAll } from 'micromark-util-resolve-all';
import type { Event, Extension as Syntax, Resolver, State, TokenizeContext, Tokenizer } from 'micromark-util-types';

/** `==marked text==`. */
export interface Highlight extends Parent {
  type: 'highlight';
  children: PhrasingContent[];
}

declare module 'mdast' {
  interface PhrasingContentMap {
    highlight: Highlight;
  }
  interface RootContentMap {
    highlight: Highlight;
  }
}

declare module 'micromark-util-types' {
  interface TokenTypeMap {
    highlight: 'highlight';
    highlightMarker: 'highlightMarker';
    highlightText: 'highlightText';
  }
}

declare module 'mdast-util-to-markdown' {
  interface ConstructNameMap {
    highlight: 'highlight';
  }
}

const equalsSign = 61;

const tokenize: Tokenizer = function (this: TokenizeContext, effects, ok, nok) {
  const previous = this.previous;
  const events = this.events;
  let size = 0;

  const start: State = (code) => {
    const wasEscaped = events.at(-1)?.[1].type === 'characterEscape';
    if (previous === equalsSign && !wasEscaped) return nok(code);
    effects.enter('highlightMarker');
    return marker(code);
  };
  const marker: State = (code) => {
    if (code === equalsSign) {
      if (size === 2) return nok(code);
      size += 1;
      effects.consume(code);
      return marker;
    }
    if (size < 2) return nok(code);
    const token = effects.exit('highlightMarker');
    const before = classifyCharacter(previous);
    const after = classifyCharacter(code);
    token._open = !after || (after === 2 && Boolean(before));
    token._close = !before || (before === 2 && Boolean(after));
    return ok(code);
  };
  return start;
};

/** The events of one highlight, from its opening marker at `open` to its closing one at `close`. */
function highlightEvents(events: Event[], open: number, close: number, context: TokenizeContext): Event[] {
  const opening = events[open]![1];
  const closing = events[close]![1];
  const whole = { type: 'highlight' as const, start: { ...opening.start }, end: { ...closing.end } };
  const text = { type: 'highlightText' as const, start: { ...opening.end }, end: { ...closing.start } };
  const inner = events.slice(open + 1, close);
  const insideSpan = context.parser.constructs.insideSpan.null;
  return [
    ['enter', whole, context],
    ['enter', opening, context],
    ['exit', opening, context],
    ['enter', text, context],
    ...(insideSpan ? resolveAll(insideSpan, inner, context) : inner),
    ['exit', text, context],
    ['enter', closing, context],
    ['exit', closing, context],
    ['exit', whole, context],
  ];
}

/** Pairs the markers, in place as the tokenizer needs it. A marker without a partner becomes text. */
const resolve: Resolver = (events, context) => {
  const paired = new Set<unknown>();
  for (let close = 0; close < events.length; close += 1) {
    const [kind, closing] = events[close]!;
    if (kind !== 'enter' || closing.type !== 'highlightMarker' || !closing._close || paired.has(closing)) continue;
    let open = close - 1;
    const canOpen = ([kind, token]: Event) =>
      kind === 'exit' && token.type === 'highlightMarker' && Boolean(token._open) && !paired.has(token);
    while (open >= 0 && !canOpen(events[open]!)) open -= 1;
    if (open < 0) continue;
    paired.add(closing).add(events[open]![1]);
    const nested = highlightEvents(events, open, close, context);
    splice(events, open - 1, close - open + 3, nested);
    close = open + nested.length - 2;
  }
  for (const [, token] of events) {
    if (token.type === 'highlightMarker' && !paired.has(token)) token.type = 'data';
  }
  return events;
};

const construct = { name: 'highlight', tokenize, resolveAll: resolve };

export const highlightSyntax: Syntax = {
  text: { [equalsSign]: construct },
  insideSpan: { null: [construct] },
  attentionMarkers: { null: [equalsSign] },
};

export const highlightFromMarkdown: FromMarkdown = {
  canContainEols: ['highlight'],
  enter: {
    highlight(this: CompileContext, token: Token) {
      this.enter({ type: 'highlight', children: [] }, token);
    },
  },
  exit: {
    highlight(this: CompileContext, token: Token) {
      this.exit(token);
    },
  },
};

/** Where the marker is no marker: the same places as for strikethrough. */
const withoutHighlight = [
  'autolink',
  'destinationLiteral',
  'destinationRaw',
  'reference',
  'titleQuote',
  'titleApostrophe',
] as const;

const writeHighlight: Handle & { attention?: unknown; peek?: Handle } = (node: Highlight, _parent, state, info) => {
  const exit = state.enter('highlight');
  const inner = state.containerPhrasing(node as never, { ...info, before: '=', after: '=' });
  exit();
  return `==${inner}==`;
};
writeHighlight.attention = () => ({ construct: 'highlight', markers: ['='], sizes: [2] });
writeHighlight.peek = () => '=';

export const highlightToMarkdown: ToMarkdown = {
  handlers: { highlight: writeHighlight } as ToMarkdown['handlers'],
  unsafe: [{ character: '=', after: '=', inConstruct: 'phrasing', notInConstruct: [...withoutHighlight] }],
};
