// The outlines of land and borders: arcs shared by the countries on both sides, as differences of grid steps.

/**
 * The inlined outlines as { polygons, coasts, borders, labels }: `polygons` are lists of rings, a ring and a line are
 * lists of [lat, lon]; a label is { name, lat, lon, zoom }, `zoom` being the first level at which there is room for it.
 */
export function decodeWorld({ scale, translate, arcs, polygons, labels }) {
  const lines = arcs.map((arc) => decodeArc(arc, scale, translate));
  const uses = new Uint8Array(lines.length);
  const ring = (indices) => {
    const points = [];
    for (const index of indices) {
      const i = index < 0 ? ~index : index;
      uses[i] = Math.min(2, uses[i] + 1);
      const line = index < 0 ? lines[i].slice().reverse() : lines[i];
      for (let k = points.length > 0 ? 1 : 0; k < line.length; k++) points.push(line[k]);
    }
    return points;
  };
  const rings = polygons.map((polygon) => polygon.map(ring));
  const drawn = (count) => lines.filter((_, i) => uses[i] === count).flatMap(withoutCuts);
  return { polygons: rings, coasts: drawn(1), borders: drawn(2), labels };
}

function decodeArc(arc, scale, translate) {
  const line = [];
  let x = 0;
  let y = 0;
  for (let i = 0; i < arc.length; i += 2) {
    x += arc[i];
    y += arc[i + 1];
    line.push([y * scale[1] + translate[1], x * scale[0] + translate[0]]);
  }
  return line;
}

// Where land is cut at the date line or at the pole there is no coast.
function withoutCuts(line) {
  const cut = ([lat, lon]) => Math.abs(lon) > 179.99 || lat < -89;
  const pieces = [[]];
  for (const point of line) {
    const piece = pieces[pieces.length - 1];
    if (piece.length > 0 && cut(point) && cut(piece[piece.length - 1])) pieces.push([point]);
    else piece.push(point);
  }
  return pieces.filter((piece) => piece.length > 1);
}
