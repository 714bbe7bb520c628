// The viewer's reader of KML, without a browser.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { decodeReferences, decodeText, fileNameProblem, queryValue } from '../../tools/mapview/src/bytes.js';
import { bearing, destination, distance, parsePosition } from '../../tools/mapview/src/geo.js';
import { readKml } from '../../tools/mapview/src/kml.js';
import { kmlText } from './support/site.js';

const latin1 = (text) => Buffer.from(text, 'latin1');
const one = (place) => readKml(kmlText('F', [{ name: 'Site', country: 'D', lat: '50.5', lon: '7.25', ...place }])).transmitters[0];

test('every field of an exported placemark is read', () => {
  const kml = readKml(kmlText('Quillon 2010-Jul', [{
    name: 'K&#246;ln&#47;Sendeturm', country: 'D', lat: '50.94', lon: '6.93', receptions: [['05/07/2010 21:34:00', 'D392', ' WDR 2  ', '87.6']],
  }]));
  assert.deepEqual(kml, {
    name: 'Quillon 2010-Jul',
    transmitters: [{
      name: 'K\u00f6ln/Sendeturm (D)', site: 'K\u00f6ln/Sendeturm', country: 'D', colour: '#ffaa00', position: { lat: 50.94, lon: 6.93 },
      receptions: [{ date: '05/07/2010 21:34:00', pi: 'D392', rds: ' WDR 2  ', freq: '87.6' }],
    }],
  });
});

for (const [codePage, name, expected] of [
  ['windows-1250', '&#179;&#211;d&#159;', '\u0142\u00d3d\u017a'], ['windows-1251', '&#204;&#238;', '\u041c\u043e'],
  ['windows-1252', '&#179;&#228;', '\u00b3\u00e4'], ['utf-8', '&#228;', '\u00e4'], ['unknown', '&#228;', '\u00e4'],
  ['windows-1250', '&#65;&#322;', 'A\u0142'],
]) {
  test(`${name} is read in ${codePage}`, () => {
    const [read] = readKml(kmlText('F', [{ name, country: 'PL', lat: '50', lon: '20' }]), codePage).transmitters;
    assert.equal(read.site, expected);
    assert.equal(decodeReferences(name, codePage), expected);
  });
}

test('a transmitter export has no receptions and red markers', () => {
  const { receptions, colour } = one({ colour: 'ff0000ff' });
  assert.deepEqual([receptions, colour], [[], '#ff0000']);
});

test('a bare "&" and "<" in names and countries stay what they are', () => {
  const { site, country } = one({ name: 'R&D <b> AT&T &amp 5 < 6', country: 'A&B<C' });
  assert.equal(site, 'R&D <b> AT&T &amp 5 < 6');
  assert.equal(country, 'A&B<C');
});

test('an empty folder has no transmitter, and what is no KML is refused', () => {
  assert.deepEqual(readKml(kmlText('Quillon Full', [])), { name: 'Quillon Full', transmitters: [] });
  for (const text of ['', 'hello', '<html><body>404</body></html>']) assert.throws(() => readKml(text), /no KML/);
});

for (const [lon, lat, expected] of [
  ['7.25', '50.5', { lon: 7.25, lat: 50.5 }], ['-9.18', '-.5', { lon: -9.18, lat: -0.5 }], ['7,25', '50,5', { lon: 7.25, lat: 50.5 }],
  ['', '', null], ['abc', '50', null], ['181', '50', null], ['7', '90.1', null], ['7', '', null], ['Infinity', '1', null], ['1e1', '1', null],
]) {
  test(`coordinates ${lon},${lat},200`, () => assert.deepEqual(one({ lon, lat }).position, expected));
}

for (const rds of ['a] [b', '</li>', '<li>', '<li>x</li><li>', ']]>', ']]> </ol>', '</description>', '<Placemark>', '<![CDATA[', '']) {
  test(`an RDS name ${JSON.stringify(rds)} is one field of one reception`, () => {
    assert.deepEqual(one({ receptions: [['1', 'D392', rds, '87.6'], ['2', 'D393', 'x', '87.7']] }).receptions, [
      { date: '1', pi: 'D392', rds, freq: '87.6' }, { date: '2', pi: 'D393', rds: 'x', freq: '87.7' },
    ]);
  });
}

test('a reception of another form is kept as its text', () => {
  const text = '<kml><Placemark><name>A (D)</name><description><![CDATA[ <ol>\n<li>heard once</li>\n</ol>]]></description></Placemark></kml>';
  assert.deepEqual(readKml(text).transmitters[0].receptions, [{ text: 'heard once' }]);
});

test('a file that breaks off keeps what it holds', () => {
  const whole = kmlText('F', [{ name: 'A', country: 'D', lat: '1', lon: '2', receptions: [['d', 'p', 'r', 'f']] }, { name: 'B', country: 'D', lat: '3', lon: '4' }]);
  for (let length = whole.indexOf('<Placemark>') + 12; length <= whole.length; length++) {
    const { transmitters } = readKml(whole.slice(0, length));
    assert.ok(transmitters.length === 1 || transmitters.length === 2);
  }
});

test('long broken files are read in a moment', () => {
  const pieces = ['<Placemark>', '<Placemark><name>', '<Placemark><description><![CDATA[', '<description><![CDATA[ ]]>', '<coordinates>', '<li>', '<![CDATA['];
  for (const piece of pieces) {
    const start = performance.now();
    readKml(`<kml>${piece.repeat(200000)}`);
    readKml(`<kml><Placemark><description><![CDATA[${piece.repeat(200000)}`);
    assert.ok(performance.now() - start < 5000, piece);
  }
});

test('bytes are UTF-8 where they are that, otherwise the code page', () => {
  assert.equal(decodeText(latin1('K\u00f6ln')), 'K\u00f6ln');
  assert.equal(decodeText(Buffer.from('K\u00f6ln \u20ac')), 'K\u00f6ln \u20ac');
  assert.equal(decodeText(Buffer.from('\ufeffK\u00f6ln')), 'K\u00f6ln');
  assert.equal(decodeText(latin1('\xb3'), 'windows-1250'), '\u0142');
  assert.equal(decodeText(latin1('\xb3'), 'nonsense'), '\u00b3');
});

test('character references give their characters, once', () => {
  assert.equal(decodeReferences('&#246;&#xF6;&amp;&#38;amp;&#321;&#0;&#1114112;&unknown;&#;'), '\u00f6\u00f6&&amp;\u0141&#0;&#1114112;&unknown;&#;');
});

test('a query value is read as UTF-8 or as the code page of the page that linked', () => {
  for (const query of ['?a=1&kml=2010-M%E4r.kml', '?kml=2010-M%C3%A4r.kml', '?kml=2010-M\u00e4r.kml']) {
    assert.equal(queryValue(query, 'kml'), '2010-M\u00e4r.kml');
  }
  assert.equal(queryValue('?kml=a%zz%2.kml', 'kml'), 'a%zz%2.kml');
  assert.equal(queryValue('?home=1,2', 'kml'), null);
});

test('only the plain name of a KML file is a file name', () => {
  for (const name of ['quillon.kml', 'quillon_log_2010-M\u00e4r.kml', 'A.KML', 'a b.kml']) assert.equal(fileNameProblem(name), null);
  for (const name of ['', '.kml', 'a.htm', 'a.kml?', '../a.kml', 'a/b.kml', 'a\\b.kml', 'c:a.kml', 'a..kml', 'http://x/a.kml', '//x/a.kml', 'a\0.kml', 'a\n.kml']) {
    assert.notEqual(fileNameProblem(name), null, name);
  }
});

test('distances, directions and positions', () => {
  const [london, madrid] = [{ lat: 51.5, lon: -0.1 }, { lat: 40.4, lon: -3.7 }];
  assert.equal(Math.round(distance(london, madrid)), 1265);
  const there = destination(london, bearing(london, madrid), distance(london, madrid));
  assert.ok(Math.abs(there.lat - madrid.lat) < 1e-9 && Math.abs(there.lon - madrid.lon) < 1e-9);
  assert.deepEqual(parsePosition('51.05, -3.72'), { lat: 51.05, lon: -3.72 });
  for (const text of [null, '', '51', '91,0', '0,181', '51,5,3,7', 'a,b']) assert.equal(parsePosition(text), null);
});
