// Questions about a rendered page.

/** The pixels by which the page is wider than its window. */
export function overflow(page) {
  return page.evaluate(() => document.documentElement.scrollWidth - document.documentElement.clientWidth);
}

/** The lowest contrast between the colour of a text and the background behind it, over what `selector` finds. */
export function lowestContrast(page, selector) {
  return page.evaluate((found) => {
    const numbers = (colour) => colour.match(/[\d.]+/g).map(Number);
    const luminance = (colour) => {
      const [r, g, b] = numbers(colour).map((value) => (value / 255 <= 0.04045 ? value / 255 / 12.92 : ((value / 255 + 0.055) / 1.055) ** 2.4));
      return 0.2126 * r + 0.7152 * g + 0.0722 * b;
    };
    const background = (node) => {
      for (let each = node; each; each = each.parentElement) {
        const colour = getComputedStyle(each).backgroundColor;
        if (numbers(colour)[3] !== 0) return colour;
      }
      return 'rgb(255, 255, 255)';
    };
    const contrasts = [...document.querySelectorAll(found)].map((node) => {
      const [a, b] = [luminance(getComputedStyle(node).color), luminance(background(node))];
      return (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
    });
    return Math.min(...contrasts);
  }, selector);
}

/** Whether the page's own ground is dark. */
export function isDark(page) {
  return page.evaluate(() => {
    const [r, g, b] = getComputedStyle(document.body).backgroundColor.match(/\d+/g).map(Number);
    return (r + g + b) / 3 < 80;
  });
}
