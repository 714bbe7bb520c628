/** An element with attributes and children; a string becomes a text node, never markup. */
export function element(tag, attributes = {}, ...children) {
  const node = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) node.setAttribute(name, value);
  node.append(...children);
  return node;
}

/** "1 transmitter", "5,001 transmitters". */
export function count(number, noun) {
  return `${number.toLocaleString('en')} ${noun}${number === 1 ? '' : 's'}`;
}

/** The value of a custom property of the page's style. */
export function styleValue(name) {
  return getComputedStyle(document.documentElement).getPropertyValue(name).trim();
}
