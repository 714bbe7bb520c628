// Text out of bytes, whatever their encoding is said to be.

/** Strict UTF-8 where the bytes are that, otherwise the 8-bit code page `fallback` (an encoding label). */
export function decodeText(bytes, fallback = 'windows-1252') {
  try {
    return new TextDecoder('utf-8', { fatal: true }).decode(bytes);
  } catch {
    return decoder(fallback).decode(bytes);
  }
}

function decoder(label) {
  try {
    return new TextDecoder(label);
  } catch {
    return new TextDecoder('windows-1252');
  }
}

/**
 * The value of `key` in a query string ("?kml=a.kml&home=50,8"), or null. A link in a page of an 8-bit code page
 * escapes that page's bytes, so a value is not always UTF-8: "M%E4r" and "M%C3%A4r" both give "Mär".
 */
export function queryValue(query, key, fallback) {
  for (const pair of query.replace(/^\?/, '').split('&')) {
    const [name, ...rest] = pair.split('=');
    if (name === key) return decodeText(unescapeBytes(rest.join('=')), fallback);
  }
  return null;
}

function unescapeBytes(value) {
  const source = new TextEncoder().encode(value.replace(/\+/g, ' '));
  const bytes = [];
  for (let i = 0; i < source.length; i++) {
    const hex = source[i] === 0x25 ? String.fromCharCode(source[i + 1], source[i + 2]) : '';
    if (/^[0-9A-Fa-f]{2}$/.test(hex)) {
      bytes.push(parseInt(hex, 16));
      i += 2;
    } else {
      bytes.push(source[i]);
    }
  }
  return Uint8Array.from(bytes);
}

// The characters of the codes 128 to 255; a code that is no character by itself is one of windows-1252.
function highCharacters(label) {
  const codes = Array.from({ length: 128 }, (_, i) => 128 + i);
  const [wanted, western] = [decoder(label), decoder('windows-1252')];
  return codes.map((code) => {
    const character = wanted.decode(Uint8Array.of(code));
    return character.length === 1 && character !== '\ufffd' ? character : western.decode(Uint8Array.of(code));
  });
}

const knownHighCharacters = new Map();

function highCharacter(code, label) {
  if (!knownHighCharacters.has(label)) knownHighCharacters.set(label, highCharacters(label));
  return knownHighCharacters.get(label)[code - 128];
}

const namedEntities = { amp: '&', lt: '<', gt: '>', quot: '"', apos: "'" };

/**
 * Text with its character references replaced; an "&" that begins none stays what it is. The log writes codes of its
 * code page: 128 to 255 are those of `codePage` (an encoding label).
 */
export function decodeReferences(text, codePage = 'windows-1252') {
  return text.replace(/&(?:#(\d{1,7})|#[xX]([0-9A-Fa-f]{1,6})|(amp|lt|gt|quot|apos));/g, (all, decimal, hex, name) => {
    if (name) return namedEntities[name];
    const code = decimal ? Number(decimal) : parseInt(hex, 16);
    if (code >= 128 && code < 256) return highCharacter(code, codePage);
    return code > 0 && code <= 0x10ffff ? String.fromCodePoint(code) : all;
  });
}

/** The bytes of a text in base64, or null when `text` is none. */
export function fromBase64(text) {
  try {
    return typeof text === 'string' ? Uint8Array.from(atob(text), (character) => character.charCodeAt(0)) : null;
  } catch {
    return null;
  }
}

/** Why `name` is not the plain name of a KML file in this directory, or null when it is one. */
export function fileNameProblem(name) {
  if (/[/\\:]/.test(name) || name.includes('..') || /[\u0000-\u001f\u007f]/.test(name)) {
    return 'only the plain name of a file in the same directory can be shown';
  }
  return /.\.kml$/i.test(name) ? null : 'the name of a file to be shown ends in ".kml"';
}
