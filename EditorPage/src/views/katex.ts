/** A file of its own in the built page, since it is a third of all code and few notes hold formulas. */
export { default } from 'katex';
