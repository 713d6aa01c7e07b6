import type { Literal, Parent } from 'mdast';
import type { Extension as FromMarkdown, Token, CompileContext } from 'mdast-util-from-markdown';
import type { Handle, Options as ToMarkdown } from 'mdast-util-to-markdown';
import type { Code, Construct, Extension as Syntax, State, Tokenizer } from 'micromark-util-types';

/** `[[Name#Heading|alias]]` and `![[picture.png|300]]`. */
export interface Wikilink extends Literal {
  type: 'wikilink';
  isEmbed: boolean;
  target: string;
  alias: string | null;
}

declare module 'mdast' {
  interface PhrasingContentMap {
    wikilink: Wikilink;
  }
  interface RootContentMap {
    wikilink: Wikilink;
  }
}

declare module 'micromark-util-types' {
  interface TokenTypeMap {
    wikilink: 'wikilink';
  }
}

const exclamationMark = 33;
const openBracket = 91;
const closeBracket = 93;

const isLineEnding = (code: Code) => code !== null && code < -2;

function tokenizer(isEmbed: boolean): Tokenizer {
  return (effects, ok, nok) => {
    let isBlank = true;

    const start: State = (code) => {
      effects.enter('wikilink');
      if (!isEmbed) return firstBracket(code);
      effects.consume(code);
      return firstBracket;
    };
    const firstBracket: State = (code) => {
      if (code !== openBracket) return nok(code);
      effects.consume(code);
      return secondBracket;
    };
    const secondBracket: State = (code) => {
      if (code !== openBracket) return nok(code);
      effects.consume(code);
      return inside;
    };
    const inside: State = (code) => {
      if (code === null || code === openBracket || isLineEnding(code)) return nok(code);
      if (code === closeBracket) {
        if (isBlank) return nok(code);
        effects.consume(code);
        return lastBracket;
      }
      if (code > 32) isBlank = false;
      effects.consume(code);
      return inside;
    };
    const lastBracket: State = (code) => {
      if (code !== closeBracket) return nok(code);
      effects.consume(code);
      effects.exit('wikilink');
      return ok;
    };
    return start;
  };
}

const construct = (isEmbed: boolean): Construct => ({
  name: isEmbed ? 'wikiembed' : 'wikilink',
  tokenize: tokenizer(isEmbed),
});

export const wikilinkSyntax: Syntax = {
  text: { [openBracket]: construct(false), [exclamationMark]: construct(true) },
};

/** Reads the source of a wiki link. In a table cell the pipe stands behind a backslash. */
export function readWikilink(source: string): Omit<Wikilink, 'type' | 'value'> {
  const isEmbed = source.startsWith('!');
  const inner = source.slice(isEmbed ? 3 : 2, -2);
  const pipe = inner.indexOf('|');
  if (pipe < 0) return { isEmbed, target: inner, alias: null };
  const target = inner.slice(0, pipe).replace(/\\$/, '');
  return { isEmbed, target, alias: inner.slice(pipe + 1) };
}

export const wikilinkFromMarkdown: FromMarkdown = {
  enter: {
    wikilink(this: CompileContext, token: Token) {
      const value = this.sliceSerialize(token);
      this.enter({ type: 'wikilink', value, ...readWikilink(value) }, token);
    },
  },
  exit: {
    wikilink(this: CompileContext, token: Token) {
      this.exit(token);
    },
  },
};

const writeWikilink: Handle = (node: Wikilink, _parent: Parent | undefined, state) => {
  const pipe = state.stack.includes('tableCell') ? '\\|' : '|';
  const alias = node.alias === null ? '' : pipe + node.alias;
  return `${node.isEmbed ? '!' : ''}[[${node.target}${alias}]]`;
};

export const wikilinkToMarkdown: ToMarkdown = { handlers: { wikilink: writeWikilink } as ToMarkdown['handlers'] };
