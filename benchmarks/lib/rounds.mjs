/**
 * Alternated rounds: every round runs every contender once, and every second round in the opposite order, so that whatever
 * else the machine does meets all of them alike.
 *
 * @typedef {object} Contender
 * @property {string} name
 * @property {() => Promise<Record<string, number>>} measure  runs once; gives its measured values by name
 */

/**
 * Runs one uncounted pass and then `rounds` counted ones.
 * @param {Contender[]} contenders
 * @returns {Promise<Record<string, Record<string, number[]>>>} contender, then value name: one number per round
 */
export async function runRounds(contenders, rounds, onRound = () => {}) {
  const results = Object.fromEntries(contenders.map(({ name }) => [name, {}]));
  for (let round = 0; round <= rounds; round++) {
    const order = round % 2 === 0 ? contenders : [...contenders].reverse();
    for (const { name, measure } of order) {
      const values = await measure();
      if (round > 0) append(results[name], values);
    }
    onRound(round);
  }
  return results;
}

function append(collected, values) {
  for (const [name, value] of Object.entries(values)) {
    if (!Number.isFinite(value)) throw new Error(`${name} is not a number: ${value}`);
    (collected[name] ??= []).push(value);
  }
}
