// The outlines that the map viewer carries, as it decodes them.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { decodeWorld } from '../../tools/mapview/src/world.js';
import { sourcePath } from './support/paths.js';

const html = readFileSync(sourcePath('data/quillon_mapview.htm'), 'utf8');
const world = decodeWorld(JSON.parse(/<script type="application\/json" id="world">([^]*?)<\/script>/.exec(html)[1]));

function inRing(ring, lat, lon) {
  let within = false;
  for (let i = 0, j = ring.length - 1; i < ring.length; j = i++) {
    const [[yi, xi], [yj, xj]] = [ring[i], ring[j]];
    if (yi > lat !== yj > lat && lon < ((xj - xi) * (lat - yi)) / (yj - yi) + xi) within = !within;
  }
  return within;
}

const onLand = (lat, lon) => world.polygons.some((rings) => rings.filter((ring) => inRing(ring, lat, lon)).length % 2 === 1);

for (const [name, lat, lon, land] of [
  ['Paris', 48.85, 2.35, true], ['Moscow', 55.75, 37.6, true], ['Chukotka, west of the date line', 67, 175, true],
  ['Chukotka, east of the date line', 66.5, -173, true], ['Chukotka, at the right edge of the map', 66.5, 187, true],
  ['the South Pole', -89.5, 0, true], ['the North Sea', 56, 3, false], ['the Atlantic', 40, -30, false], ['the Bering Sea', 58, 180, false],
  ['the Arctic Ocean', 85, 100, false],
]) {
  test(`${name} is ${land ? 'land' : 'water'}`, () => assert.equal(onLand(lat, lon), land));
}

test('no ring and no line jumps across the map', () => {
  const lines = [...world.coasts, ...world.borders, ...world.polygons.flat()];
  const pole = ([lat]) => lat <= -85;
  for (const line of lines) {
    for (let i = 1; i < line.length; i++) assert.ok(Math.abs(line[i][1] - line[i - 1][1]) < 180 || (pole(line[i]) && pole(line[i - 1])));
  }
});

test('every ring is closed, and there are coasts and borders', () => {
  for (const ring of world.polygons.flat()) {
    assert.ok(ring.length >= 4);
    assert.deepEqual(ring[0].map((value) => value.toFixed(6)), ring[ring.length - 1].map((value) => value.toFixed(6)));
  }
  assert.ok(world.coasts.length > 1000);
  assert.ok(world.borders.length > 200);
});

test('names of countries stand on land, the large ones from far out', () => {
  assert.ok(world.labels.length > 200);
  const germany = world.labels.find(({ name }) => name === 'Germany');
  assert.ok(onLand(germany.lat, germany.lon));
  const zoomOf = (name) => world.labels.find((label) => label.name === name).zoom;
  assert.ok(zoomOf('Canada') < zoomOf('Germany') && zoomOf('Germany') < zoomOf('Luxembourg'));
});
