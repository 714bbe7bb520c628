// Writes geo/outlines.bin, the outlines that the program draws, from those in data/quillon_mapview.htm; "--stdout" only
// prints it. Needs nothing from npm. The form of the file stands in geo/outlines.h.
import { readFileSync, writeFileSync } from 'node:fs';

const here = (path) => new URL(path, import.meta.url);
const kmPerRadian = 6371;
const gridPerDegree = 1000;
// How far a simplified line may stand beside the true one, in km: fine as it is, medium, coarse.
const tolerances = [0, 4, 16];

function readWorld() {
  const page = readFileSync(here('../../data/quillon_mapview.htm'), 'utf8');
  return JSON.parse(/<script type="application\/json" id="world">([^]*?)<\/script>/.exec(page)[1]);
}

function decodeArc(arc, { scale, translate }) {
  const line = [];
  for (let i = 0, x = 0, y = 0; i < arc.length; i += 2) {
    x += arc[i];
    y += arc[i + 1];
    line.push([x * scale[0] + translate[0], y * scale[1] + translate[1]]);
  }
  return line;
}

/** The arcs that one area uses, as they run round it, and those between two areas. */
function coastsAndBorders(world) {
  const arcs = world.arcs.map((arc) => decodeArc(arc, world));
  const uses = arcs.map(() => 0);
  const indices = world.polygons.flat(2);
  for (const index of indices) uses[index < 0 ? ~index : index]++;
  const directed = indices.filter((index) => uses[index < 0 ? ~index : index] === 1);
  return {
    coasts: directed.map((index) => (index < 0 ? arcs[~index].slice().reverse() : arcs[index])),
    borders: arcs.filter((_, i) => uses[i] > 1),
  };
}

const keyOf = ([lon, lat]) => `${Math.round(((lon + 540) % 360) * 1e4) % 3600000} ${Math.round(lat * 1e4)}`;

/** Joins coasts that end where others begin into rings, each without its first point again at its end. */
function rings(coasts) {
  const beginning = new Map();
  for (const coast of coasts) {
    const key = keyOf(coast[0]);
    beginning.set(key, [...(beginning.get(key) ?? []), coast]);
  }
  const take = (key) => beginning.get(key)?.pop();
  return coasts.map((coast) => {
    const start = keyOf(coast[0]);
    const ring = [];
    for (let part = take(start); part; part = keyOf(ring.at(-1)) === start ? null : take(keyOf(ring.at(-1)))) {
      ring.push(...(ring.length > 0 ? part.slice(1) : part));
    }
    if (ring.length > 0 && keyOf(ring.at(-1)) !== start) throw new Error(`a coast ends at ${ring.at(-1)}`);
    return ring.slice(0, -1);
    // What closes Antarctica at the pole is no coast.
  }).filter((ring) => ring.length > 2 && ring.some(([, lat]) => Math.abs(lat) < 89));
}

function vector([lon, lat]) {
  const [l, p] = [(lon * Math.PI) / 180, (lat * Math.PI) / 180];
  return [Math.cos(p) * Math.cos(l), Math.cos(p) * Math.sin(l), Math.sin(p)];
}

const minus = (a, b) => [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];

function distanceToChord(point, from, to) {
  const along = minus(to, from);
  const off = minus(point, from);
  const length = dot(along, along);
  const t = length > 0 ? Math.max(0, Math.min(1, dot(off, along) / length)) : 0;
  const rest = off.map((value, i) => value - t * along[i]);
  return Math.sqrt(dot(rest, rest)) * kmPerRadian;
}

/** Douglas and Peucker's choice of the points of an open line. */
function simplified(line, tolerance) {
  if (tolerance === 0 || line.length < 3) return line;
  const vectors = line.map(vector);
  const keep = line.map((_, i) => i === 0 || i === line.length - 1);
  const open = [[0, line.length - 1]];
  while (open.length > 0) {
    const [from, to] = open.pop();
    let [farthest, most] = [-1, tolerance];
    for (let i = from + 1; i < to; i++) {
      const distance = distanceToChord(vectors[i], vectors[from], vectors[to]);
      if (distance > most) [farthest, most] = [i, distance];
    }
    if (farthest < 0) continue;
    keep[farthest] = true;
    open.push([from, farthest], [farthest, to]);
  }
  return line.filter((_, i) => keep[i]);
}

/** A ring from its two points that are far apart; nothing when it is too small to be seen. */
function simplifiedRing(ring, tolerance) {
  if (tolerance === 0) return ring;
  const first = vector(ring[0]);
  const distances = ring.map((point) => dot(minus(vector(point), first), minus(vector(point), first)));
  const far = distances.indexOf(Math.max(...distances));
  const there = simplified(ring.slice(0, far + 1), tolerance);
  const back = simplified([...ring.slice(far), ring[0]], tolerance);
  const whole = [...there.slice(0, -1), ...back.slice(0, -1)];
  return whole.length > 2 && Math.sqrt(distances[far]) * kmPerRadian > tolerance * 1.5 ? whole : [];
}

/** The ring run through so that the smaller part of the globe is on its left. */
function turned(ring) {
  let [excess, turns] = [0, 0];
  ring.forEach(([lon1, lat1], i) => {
    const [lon2, lat2] = ring[(i + 1) % ring.length];
    const step = lon2 - lon1 - 360 * Math.round((lon2 - lon1) / 360);
    const [t1, t2] = [lat1, lat2].map((lat) => Math.tan((lat * Math.PI) / 360));
    turns += step / 360;
    excess += 2 * Math.atan2(Math.tan((step * Math.PI) / 360) * (t1 + t2), 1 + t1 * t2);
  });
  const south = ring[0][1] < 0;
  const wrong = Math.abs(turns) > 0.5 ? (turns > 0) === south : excess > 0;
  return wrong ? ring.slice().reverse() : ring;
}

/** A line on the grid without points that fall together, closed rings without their first point again. */
function onGrid(line, closed) {
  const points = line.map(([lon, lat]) => [Math.round(lon * gridPerDegree), Math.round(lat * gridPerDegree)]);
  const apart = (a, b) => a[0] !== b[0] || a[1] !== b[1];
  return points.filter((point, i) => (i === 0 ? !closed || apart(point, points.at(-1)) : apart(point, points[i - 1])));
}

function number(value, bytes) {
  for (; value > 127; value = Math.floor(value / 128)) bytes.push((value % 128) + 128);
  bytes.push(value);
}

function linesAsBytes(lines, bytes) {
  number(lines.length, bytes);
  const zigzag = (value) => number(value < 0 ? -2 * value - 1 : 2 * value, bytes);
  for (const line of lines) {
    number(line.length, bytes);
    let before = [0, 0];
    for (const point of line) {
      zigzag(point[0] - before[0]);
      zigzag(point[1] - before[1]);
      before = point;
    }
  }
}

function build() {
  const { coasts, borders } = coastsAndBorders(readWorld());
  const whole = rings(coasts);
  const bytes = [];
  for (const tolerance of tolerances) {
    const land = whole.map((ring) => onGrid(simplifiedRing(ring, tolerance), true)).filter((ring) => ring.length > 2);
    linesAsBytes(land.map((ring) => turned(ring.map(([x, y]) => [x / gridPerDegree, y / gridPerDegree]))
      .map(([lon, lat]) => [Math.round(lon * gridPerDegree), Math.round(lat * gridPerDegree)])), bytes);
    linesAsBytes(borders.map((line) => onGrid(simplified(line, tolerance), false)).filter((line) => line.length > 1), bytes);
  }
  return Buffer.from(bytes);
}

if (process.argv.includes('--stdout')) process.stdout.write(build());
else writeFileSync(here('../../geo/outlines.bin'), build());
