// A tolerant reader of the exported KML: names and countries may hold a bare "&" or "<", so no XML parser reads them.
import { decodeReferences } from './bytes.js';

/**
 * The transmitters of a KML text:
 * { name, transmitters: [{ name, site, country, colour, position, receptions }] }, where `position` is
 * { lat, lon } in degrees or null, `colour` is "#rrggbb" or null, and a reception is { date, pi, rds, freq } or { text }.
 * Every text is plain text; `codePage` is that of the character references. Throws an Error when the text is no KML.
 */
export function readKml(text, codePage) {
  if (!/<(kml|Placemark)[\s>]/.test(text)) throw new Error('there is no KML in it');
  const find = finder(text);
  const token = /<(\/?)(Placemark|name|description|color|coordinates)(?:\s[^>]*)?>/g;
  const result = { name: '', transmitters: [] };
  let current = null;
  for (let match = token.exec(text); match; match = token.exec(text)) {
    const [, closing, element] = match;
    if (element === 'Placemark') {
      if (current) result.transmitters.push(transmitter(current, codePage));
      current = closing ? null : {};
    } else if (!closing) {
      const start = token.lastIndex;
      const { content, end } = element === 'description' ? description(text, start, find, codePage) : plain(text, element, start, find);
      token.lastIndex = end;
      if (current) current[element] ??= content;
      else if (element === 'name') result.name ||= decodeReferences(unwrap(content), codePage);
    }
  }
  if (current) result.transmitters.push(transmitter(current, codePage));
  return result;
}

// A search that remembers what no longer comes, so that a broken file is not scanned to its end again and again.
function finder(text) {
  const gone = new Set();
  return (needle, from) => {
    if (gone.has(needle)) return -1;
    const at = text.indexOf(needle, from);
    if (at < 0) gone.add(needle);
    return at;
  };
}

function plain(text, element, start, find) {
  const closing = `</${element}>`;
  const at = find(closing, start);
  if (at >= 0) return { content: text.slice(start, at), end: at + closing.length };
  const line = find('\n', start);
  const end = line < 0 ? text.length : line;
  return { content: text.slice(start, end), end };
}

// A list of receptions may hold anything: "]]>" ends it only where the element ends too.
function description(text, start, find, codePage) {
  if (!text.slice(start, start + 32).trimStart().startsWith('<![CDATA[')) {
    const { content, end } = plain(text, 'description', start, find);
    return { content: decodeReferences(content, codePage), end };
  }
  const ending = /\s*<\/description>/y;
  const first = text.indexOf('<![CDATA[', start) + 9;
  for (let at = find(']]>', first); at >= 0; at = find(']]>', at + 3)) {
    ending.lastIndex = at + 3;
    if (ending.test(text)) return { content: text.slice(first, at), end: ending.lastIndex };
  }
  return { content: text.slice(first), end: text.length };
}

function unwrap(content) {
  return content.replace(/^\s*<!\[CDATA\[([^]*)\]\]>\s*$/, '$1').trim();
}

function transmitter(elements, codePage) {
  const name = decodeReferences(unwrap(elements.name ?? ''), codePage);
  const at = name.endsWith(')') ? name.lastIndexOf(' (') : -1;
  return {
    name,
    site: at < 0 ? name : name.slice(0, at),
    country: at < 0 ? '' : name.slice(at + 2, -1),
    colour: colour((elements.color ?? '').trim()),
    position: position(elements.coordinates ?? ''),
    receptions: receptions(elements.description ?? ''),
  };
}

// KML writes alpha, blue, green, red.
function colour(text) {
  const parts = /^[0-9a-f]{2}([0-9a-f]{2})([0-9a-f]{2})([0-9a-f]{2})$/i.exec(text);
  return parts ? `#${parts[3]}${parts[2]}${parts[1]}`.toLowerCase() : null;
}

function position(text) {
  const parts = text.trim().split(',');
  // "7,25,50,5,200": degrees that were typed with a decimal comma.
  const [lon, lat] = parts.length === 5 ? [`${parts[0]}.${parts[1]}`, `${parts[2]}.${parts[3]}`] : parts;
  const degrees = (value, limit) => {
    const number = value !== undefined && /^\s*[+-]?(\d+\.?\d*|\.\d+)\s*$/.test(value) ? Number(value) : NaN;
    return Math.abs(number) <= limit ? number : null;
  };
  const place = { lat: degrees(lat, 90), lon: degrees(lon, 180) };
  return place.lat === null || place.lon === null ? null : place;
}

function receptions(text) {
  const items = [];
  const pieces = text.split('<li>');
  for (const piece of pieces.slice(1)) {
    // What does not begin like an item is the rest of a name that held "<li>" itself.
    if (items.length > 0 && !piece.startsWith('[')) items[items.length - 1] += `<li>${piece}`;
    else items.push(piece);
  }
  if (items.length === 0) {
    const rest = text.replace(/<\/?ol>/g, '').trim();
    return rest === '' ? [] : [{ text: rest }];
  }
  return items.map(reception);
}

// "[date] [PI] [RDS name] [frequency]</li>"; the RDS name is the only field that comes from the air.
function reception(item) {
  const end = item.lastIndexOf('</li>');
  const text = (end < 0 ? item : item.slice(0, end)).trim();
  const pi = text.indexOf('] [');
  const rds = text.indexOf('] [', pi + 3);
  const freq = text.lastIndexOf('] [');
  if (!text.startsWith('[') || !text.endsWith(']') || pi < 0 || rds < 0 || freq <= rds) return { text };
  return { date: text.slice(1, pi), pi: text.slice(pi + 3, rds), rds: text.slice(rds + 3, freq), freq: text.slice(freq + 3, -1) };
}
