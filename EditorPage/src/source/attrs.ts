import type { Node } from 'prosemirror-model';
import { schema } from '../schema';
import type { Splice } from './patch';
import { childPlace, endOf, readItemMarker, type Place } from './place';

const { nodes } = schema;

/** The ways to change what a block's marker says: a heading's level, a task's box, where a list's numbers start. */
export function attrSplices(source: string, place: Place, next: Node): Splice[] {
  switch (place.node.type) {
    case nodes.heading:
      return headingLevel(source, place, next);
    case nodes.list_item:
      return taskBox(source, place, next);
    case nodes.list:
      return firstNumber(source, place, next);
    case nodes.code_block:
      return codeInfo(source, place, next);
    default:
      return [];
  }
}

function headingLevel(source: string, place: Place, next: Node): Splice[] {
  const hashes = /^#{1,6}/.exec(source.slice(place.start, place.start + 6))?.[0].length ?? 0;
  if (hashes === 0) return [];
  return [{ from: place.start, to: place.start + hashes, text: '#'.repeat(next.attrs.level) }];
}

function taskBox(source: string, place: Place, next: Node): Splice[] {
  const first = childPlace(place, 0);
  const line = source.slice(place.start, endOf(place)).split('\n', 1)[0]!;
  const { marker } = readItemMarker(line);
  const { checked } = next.attrs;
  const box = /^[-+*\d.)]+[ \t]+(\[[ xX]\][ \t]?)/.exec(line);
  if (place.node.attrs.checked !== null) {
    if (!box) return [];
    const from = place.start + box[0].length - box[1]!.length;
    if (checked === null) return [{ from, to: from + box[1]!.length, text: '' }];
    return [{ from: from + 1, to: from + 2, text: checked ? 'x' : ' ' }];
  }
  const written = checked ? '[x]' : '[ ]';
  if (first.piece.isMissing) {
    const from = place.start + marker.length;
    return [{ from, to: Math.max(from, first.start), text: ` ${written}` }];
  }
  return [{ from: first.start, to: first.start, text: `${written} ` }];
}

function firstNumber(source: string, place: Place, next: Node): Splice[] {
  const isOrdered = place.node.attrs.kind === 'ordered' && next.attrs.kind === 'ordered';
  const digits = /^\d+/.exec(source.slice(place.start, place.start + 10))?.[0].length ?? 0;
  if (!isOrdered || digits === 0) return [];
  return [{ from: place.start, to: place.start + digits, text: String(next.attrs.start) }];
}

function codeInfo(source: string, place: Place, next: Node): Splice[] {
  const line = source.slice(place.start, endOf(place)).split('\n', 1)[0]!;
  const fence = /^(`{3,}|~{3,})[ \t]*/.exec(line);
  if (!fence) return [];
  const info = [next.attrs.lang, next.attrs.meta].filter(Boolean).join(' ');
  return [{ from: place.start + fence[0].length, to: place.start + line.length, text: info }];
}
