// A sample site that looks like a listener's: used for the pictures.
import { fillIndex, fillLog, indexRow, kmlText, logRow, writeMap } from './site.js';

export const home = { lat: 51.05, lon: 3.72 };

// Site, country, longitude, latitude, frequency, PI, RDS name, power, mode: regions and call-signs as they are on the air.
const stations = [
  ['Roma/Monte Mario', 'I', 12.453, 41.924, '89.7', '5201', ' RADIO1 ', '80', 'Es'],
  ['Monte Penice', 'I', 9.322, 44.793, '94.2', '5202', ' RADIO2 ', '60', 'Es'],
  ['Monte Faito', 'I', 14.499, 40.677, '94.1', '5201', ' RADIO1 ', '100', 'Es'],
  ['Martina Franca', 'I', 17.32, 40.71, '89.1', '5203', ' RADIO3 ', '60', 'Es'],
  ['Navacerrada', 'E', -4.008, 40.787, '88.2', 'E212', 'RNE-CLAS', '60', 'Es'],
  ['Alicante/Aitana', 'E', -0.27, 38.65, '88.5', 'E213', 'RADIO 3 ', '20', 'Es'],
  ['Guadalcanal', 'E', -5.82, 38.09, '89.8', 'E211', 'RNE 1   ', '40', 'Es'],
  ['Lisboa/Monsanto', 'POR', -9.184, 38.729, '95.7', '8201', 'ANTENA1 ', '44', 'Es'],
  ['Lous\u00e3/Trevim', 'POR', -8.18, 40.09, '87.9', '8201', 'ANTENA1 ', '44', 'Es'],
  ['K\u00f6ln/Sendeturm', 'D', 6.93, 50.94, '87.6', 'D392', ' WDR 2  ', '0.5', 'Tropo'],
  ['Langenberg', 'D', 7.13, 51.35, '88.8', 'D395', ' WDR 5  ', '100', 'Tropo'],
  ['Brocken', 'D', 10.618, 51.799, '91.5', 'D3C3', 'radioSAW', '100', 'Tropo'],
  ['Hamburg/Moorfleet', 'D', 10.1, 53.52, '90.3', 'D382', ' NDR 2  ', '80', 'Tropo'],
  ['Feldberg/Schwarzwald', 'D', 8.017, 47.873, '98.8', 'D3A3', '  SWR3  ', '40', 'Tropo'],
  ['Sutton Coldfield', 'G', -1.834, 52.6, '88.3', 'C202', 'BBC R2  ', '250', 'Tropo'],
  ['Holme Moss', 'G', -1.857, 53.533, '89.3', 'C202', 'BBC R2  ', '250', 'Tropo'],
  ['Wrotham', 'G', 0.287, 51.32, '91.3', 'C203', 'BBC R3  ', '250', 'Tropo'],
  ['Solt', 'HNG', 19.0, 46.8, '90.3', 'B201', 'KOSSUTH ', '80', 'Es'],
  ['Lutz\u00e9 & Fils', 'F', 2.95, 45.53, '96.8', 'F204', 'F MUSIQ ', '5', 'MS'],
  ['Pic du Midi', 'F', 0.141, 42.937, '87.9', 'F201', 'F INTER ', '12', 'Es'],
  ['H\u00f6rby', 'S', 13.72, 55.81, '88.8', 'E201', '   P1   ', '60', 'MS'],
  ['V\u00e4nersborg', 'S', 12.37, 58.36, '89.3', 'E202', '   P2   ', '60', 'MS'],
  ['Warszawa/PKiN', 'POL', 21.006, 52.232, '92.0', '3203', 'TROJKA  ', '10', 'MS'],
  ['Olsztyn/Pieczewo', 'POL', 20.52, 53.75, '94.9', '3201', 'JEDYNKA ', '120', 'Es'],
  ['Belgrade/Avala', 'SRB', 20.514, 44.696, '95.3', 'D281', 'BG 1    ', '100', 'Es'],
];

const notes = ['', '', 'Fading, under local', 'RDS locked for three seconds', 'First time from here!\r\nRecorded to 0705-2134.wav', '', 'Strong, stereo'];

function distanceOf([, , lon, lat]) {
  const x = (lon - home.lon) * Math.cos((((lat + home.lat) / 2) * Math.PI) / 180);
  return Math.hypot(x * 111.2, (lat - home.lat) * 111.2).toFixed(1);
}

function logCells(station, i) {
  const [site, country, , , freq, pi, rds, power, mode] = station;
  const date = `${String(28 - (i % 27)).padStart(2, '0')}-Jul-2010 ${String(21 - (i % 13)).padStart(2, '0')}:${String((i * 7) % 60).padStart(2, '0')}`;
  return [date, i % 9 === 4 ? '' : pi, freq, i % 9 === 4 ? '' : rds, country, site, distanceOf(station), power, notes[i % notes.length], mode];
}

/** Writes index, one month page and the map files into a site. */
export function writeSample(site) {
  const months = [
    ['Jul', 2010, 14, 61, 9, 3], ['Jun', 2010, 22, 188, 4, 0], ['May', 2010, 8, 97, 12, 1], ['Apr', 2010, 11, 0, 31, 0],
    ['Mar', 2010, 6, 0, 8, 2], ['Oct', 2009, 0, 0, 74, 0], ['Aug', 2009, 41, 16, 22, 1], ['Jul', 2009, 12, 143, 3, 0],
  ];
  site.write('quillon_logindex.htm', fillIndex({ TOTAL: '812', CALLSIGN: 'ONL 4711' }, months.map(([month, year, ms, es, tropo, other]) => (
    indexRow({ year, month, ms, es, tropo, other, total: ms + es + tropo + other, map: month !== 'Mar' })))));
  const log = Array.from({ length: 40 }, (_, i) => logCells(stations[(i * 7) % stations.length], i));
  site.write('quillon_log_2010-Jul.htm', fillLog('Jul-2010', log.map(logRow)));
  const places = stations.map(([name, country, lon, lat, freq, pi, rds], i) => ({
    name, country, lon, lat, receptions: Array.from({ length: 1 + ((i * i * 3) % 17) }, (_, k) => [`${String(k + 3).padStart(2, '0')}/07/2010 ${10 + k % 12}:${String((k * 13) % 60).padStart(2, '0')}:00`, pi, rds, freq]),
  }));
  places.push({ name: 'Somewhere in the Alps', country: 'AUT', lon: '', lat: '', receptions: [['05/07/2010 21:34:00', 'A201', '  OE1   ', '92.0']] });
  writeMap(site, 'quillon.kml', kmlText('Quillon Full', places));
}
