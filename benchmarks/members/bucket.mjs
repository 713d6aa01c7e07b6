/** The same comparison on a folder of the user's own; not one of the members that run by name. */
import { listPair, searchPair } from '../lib/vault.mjs';

export const title = 'A folder of your own, against ripgrep and fd';

/** What to measure on `folder`, in the form of a member. */
export function onBucket(folder, queries) {
  const searched = queries.length > 0 ? queries : ['möte', 'e', 'kvastskaftsprov'];
  const pairs = [
    ...searched.map((query) => searchPair({ name: `search "${query}"`, query })),
    listPair({ name: 'buildTree', call: 'tree' }),
    listPair({ name: 'allMarkdownFiles', call: 'notes' }),
  ];
  return {
    title,
    cases: pairs.map(({ line }) => line),
    contenders: ({ bin }) => pairs.flatMap((pair) => pair.contenders(bin, folder)),
  };
}
