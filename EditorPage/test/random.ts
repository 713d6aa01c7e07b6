/** A small repeatable source of chance. */
export class Random {
  private state: number;

  constructor(seed: number) {
    this.state = (seed * 2654435761 + 12345) >>> 0;
  }

  /** A whole number from 0 up to and not including `limit`. */
  below(limit: number): number {
    this.state = (this.state + 0x6d2b79f5) >>> 0;
    let mixed = this.state;
    mixed = Math.imul(mixed ^ (mixed >>> 15), mixed | 1);
    mixed ^= mixed + Math.imul(mixed ^ (mixed >>> 7), mixed | 61);
    return ((mixed ^ (mixed >>> 14)) >>> 0) % limit;
  }

  pick<T>(from: readonly T[]): T {
    return from[this.below(from.length)]!;
  }
}

/** A seed made of a text. */
export function seedOf(text: string): number {
  let hash = 7;
  for (let index = 0; index < text.length; index += 1) hash = (Math.imul(hash, 31) + text.charCodeAt(index)) | 0;
  return hash >>> 0;
}
