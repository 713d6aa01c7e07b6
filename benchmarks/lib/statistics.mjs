/** The value below which `share` (0 to 1) of the numbers lie; the nearest number that was really measured. */
export function percentile(numbers, share) {
  if (numbers.length === 0) throw new Error('nothing was measured');
  const sorted = [...numbers].sort((a, b) => a - b);
  return sorted[Math.min(sorted.length - 1, Math.floor(sorted.length * share))];
}

/** The middle number; of an even count the mean of the middle two. */
export function median(numbers) {
  if (numbers.length === 0) throw new Error('nothing was measured');
  const sorted = [...numbers].sort((a, b) => a - b);
  const middle = sorted.length >> 1;
  return sorted.length % 2 === 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}
