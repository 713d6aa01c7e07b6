import type { Literal } from 'mdast';
import type { CompileContext, Extension as FromMarkdown, Token } from 'mdast-util-from-markdown';
import { mathFromMarkdown as blockFromMarkdown, mathToMarkdown as blockToMarkdown } from 'mdast-util-math';
import type { Handle, Options as ToMarkdown } from 'mdast-util-to-markdown';
import { math } from 'micromark-extension-math';
import type { Code, Construct, Effects, Extension as Syntax, State, Tokenizer } from 'micromark-util-types';

/** `$x^2$` within a line, also `$$x^2$$`. */
export interface MathInline extends Literal {
  type: 'mathInline';
}

declare module 'mdast' {
  interface PhrasingContentMap {
    mathInline: MathInline;
  }
  interface RootContentMap {
    mathInline: MathInline;
  }
}

declare module 'micromark-util-types' {
  interface TokenTypeMap {
    mathInline: 'mathInline';
  }
}

const dollar = 36;

const isLineEnding = (code: Code) => code !== null && code < -2;
const isSpace = (code: Code) => code === null || code < 0 || code === 32;
const isDigit = (code: Code) => code !== null && code >= 48 && code <= 57;

/** Takes a character into the formula. Line ends are tokens of their own. */
function take(effects: Effects, code: Code) {
  if (!isLineEnding(code)) {
    effects.consume(code);
    return;
  }
  effects.exit('data');
  effects.enter('lineEnding');
  effects.consume(code);
  effects.exit('lineEnding');
  effects.enter('data');
}

/**
 * Math within a line. A single dollar opens only before something that is no space, and closes only after
 * something that is no space and before something that is no digit, with no other dollar between: so "$5 and $10"
 * stays text.
 */
const tokenize: Tokenizer = (effects, ok, nok) => {
  let opening = 0;
  let closing = 0;
  let last: Code = null;

  const open: State = (code) => {
    if (code !== dollar) return opening === 1 && isSpace(code) ? nok(code) : inside(code);
    opening += 1;
    effects.consume(code);
    return open;
  };
  const inside: State = (code) => {
    if (code === null) return nok(code);
    closing = 0;
    if (code === dollar) return close(code);
    take(effects, code);
    last = code;
    return inside;
  };
  const close: State = (code) => {
    if (code === dollar) {
      closing += 1;
      effects.consume(code);
      return close;
    }
    const closes = closing === opening && (opening > 1 || (!isSpace(last) && !isDigit(code)));
    if (!closes) return opening === 1 ? nok(code) : inside(code);
    effects.exit('data');
    effects.exit('mathInline');
    return ok(code);
  };
  return (code) => {
    effects.enter('mathInline');
    effects.enter('data');
    return open(code);
  };
};

const construct: Construct = {
  name: 'mathInline',
  previous(code) {
    return code !== dollar || this.events.at(-1)?.[1].type === 'characterEscape';
  },
  tokenize,
};

export const mathSyntax: Syntax = { flow: math().flow, text: { [dollar]: construct } };

function enterMath(this: CompileContext, token: Token) {
  this.enter({ type: 'mathInline', value: '' }, token);
  this.buffer();
}

function exitMath(this: CompileContext, token: Token) {
  const source = this.resume();
  const fence = /^\$+/.exec(source)![0].length;
  (this.stack.at(-1) as MathInline).value = source.slice(fence, -fence).replace(/\n/g, ' ');
  this.exit(token);
}

const block = blockFromMarkdown();

export const mathFromMarkdown: FromMarkdown = {
  enter: { ...block.enter, mathInline: enterMath },
  exit: { ...block.exit, mathInline: exitMath },
};

const writeMath: Handle = (node: MathInline, _parent, _state, { after }) => {
  const longest = Math.max(0, ...(node.value.match(/\$+/g) ?? []).map((run) => run.length));
  const isSimple = longest === 0 && /^\S(.*\S)?$/s.test(node.value) && !/^\d/.test(after);
  const fence = '$'.repeat(isSimple ? 1 : Math.max(2, longest + 1));
  return fence + node.value + fence;
};

const blockWriter = blockToMarkdown({ singleDollarTextMath: true });

export const mathToMarkdown: ToMarkdown = {
  ...blockWriter,
  handlers: { ...blockWriter.handlers, mathInline: writeMath } as ToMarkdown['handlers'],
};
