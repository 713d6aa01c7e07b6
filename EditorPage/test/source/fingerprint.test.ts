import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Node } from 'prosemirror-model';
import { schema } from '../../src/schema';
import { fingerprintChange } from '../../src/source/fingerprint';
import { SourceDocument } from '../../src/source/SourceDocument';

const blockOf = (text: string) => SourceDocument.load(text).doc.firstChild!;
/** An equal node that nobody has seen. */
const copyOf = (node: Node) => Node.fromJSON(schema, node.toJSON());

test('equal blocks have the same fingerprint, however they came about', () => {
  const before = blockOf('- ett\n- två\n  - under\n- tre\n');
  const edited = blockOf('- ett\n- två\n  - under och mer\n- **tre**\n- fyra\n');
  const change = fingerprintChange([before], [edited]);

  assert.equal(fingerprintChange([], [copyOf(edited)]), (fingerprintChange([], [copyOf(before)]) + change) | 0);
  assert.notEqual(change, 0);
});

test('an edit within a long list changes the fingerprint by what was edited, and taking it back brings it back', () => {
  const list = blockOf(Array.from({ length: 300 }, (_, index) => `- punkt ${index}\n`).join(''));
  const item = list.child(150);
  const edited = list.copy(list.content.replaceChild(150, item.copy(item.content.replaceChild(0, schema.nodes.paragraph.create(null, schema.text('annat'))))));
  const there = fingerprintChange([list], [edited]);

  assert.equal(fingerprintChange([edited], [copyOf(list)]), -there | 0);
  assert.equal(fingerprintChange([copyOf(list)], [copyOf(edited)]), there);
});
