/**
 * A small random generator with a fixed seed (mulberry32): the same numbers on every machine and in every run.
 */
export class Random {
  #state;

  constructor(seed) {
    this.#state = seed >>> 0;
  }

  /** A number from 0 up to, but not including, 1. */
  next() {
    this.#state = (this.#state + 0x6d2b79f5) >>> 0;
    let t = this.#state;
    t = Math.imul(t ^ (t >>> 15), t | 1);
    t ^= t + Math.imul(t ^ (t >>> 7), t | 61);
    return ((t ^ (t >>> 14)) >>> 0) / 4294967296;
  }

  /** A whole number from `low` to `high`, both included. */
  between(low, high) {
    return low + Math.floor(this.next() * (high - low + 1));
  }

  pick(list) {
    return list[Math.floor(this.next() * list.length)];
  }

  chance(probability) {
    return this.next() < probability;
  }
}
