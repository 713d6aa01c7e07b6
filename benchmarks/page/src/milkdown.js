/**
 * Milkdown, a library for rich Markdown editors, behind the same script object and messages as our own editor page. The
 * host is to have the text after every key, so it is written whole each time.
 */
import { Editor, defaultValueCtx, rootCtx, serializerCtx } from '@milkdown/core';
import { history } from '@milkdown/plugin-history';
import { commonmark } from '@milkdown/preset-commonmark';
import { gfm } from '@milkdown/preset-gfm';
import { Plugin } from '@milkdown/prose/state';
import { $prose, replaceAll } from '@milkdown/utils';

const post = (name, body) => window.webkit?.messageHandlers?.[name]?.postMessage(body);

const report = $prose(
  (ctx) =>
    new Plugin({
      view: () => ({
        update(view, before) {
          if (!view.state.doc.eq(before.doc)) post('changed', ctx.get(serializerCtx)(view.state.doc));
        },
      }),
    }),
);

const editor = await Editor.make()
  .config((ctx) => {
    ctx.set(rootCtx, document.getElementById('editor'));
    ctx.set(defaultValueCtx, '');
  })
  .use(commonmark)
  .use(gfm)
  .use(history)
  .use(report)
  .create();

window.VaultEditor = {
  setContent: (text) => editor.action(replaceAll(text, true)),
  focus: () => document.querySelector('[contenteditable]').focus(),
  setTheme: () => {},
  exec: () => {},
};
post('ready', {});
