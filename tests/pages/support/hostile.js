// What a hostile station or server could send as a name: each text tries to run something, to load or to send.
const outside = 'https://elsewhere.example';

export const hostileTexts = [
  '<script>hostileRan("script")</script>',
  '<script type="module">hostileRan("module")</script>',
  `<script src="${outside}/x.js"></script>`,
  '<img src=x onerror=hostileRan("img")>',
  '"><img src=x onerror=hostileRan("quoted")>',
  '<svg onload=hostileRan("svg")></svg>',
  '<svg><script>hostileRan("svg-script")</script></svg>',
  '<details open ontoggle=hostileRan("toggle")>x</details>',
  '<iframe srcdoc="<script>parent.hostileRan(1)</script>"></iframe>',
  '<iframe src="javascript:parent.hostileRan(2)"></iframe>',
  `<iframe src="${outside}/frame"></iframe>`,
  `<object data="${outside}/object"></object><embed src="${outside}/embed">`,
  '<video><source onerror=hostileRan("video") src=x></video>',
  '<input autofocus onfocus=hostileRan("focus")>',
  `<img src="${outside}/beacon.png">`,
  `<link rel="stylesheet" href="${outside}/x.css">`,
  `<style>@import url(${outside}/i.css); body { background: url(${outside}/b.png) }</style>`,
  `<base href="${outside}/">`,
  '<meta http-equiv="Content-Security-Policy" content="script-src * \'unsafe-inline\'">',
  '<meta http-equiv="refresh" content="0;url=javascript:hostileRan(3)">',
  '<a class="bait" href="javascript:hostileRan(\'link\')">click me</a>',
  '<b class="bait" onclick="hostileRan(\'click\')" onmouseover="hostileRan(\'over\')">touch me</b>',
  `<form action="${outside}/form"><button class="bait">send</button></form>`,
  '<form action="javascript:hostileRan(4)"><button class="bait">send</button></form>',
  '<script>alert("dialog")</script>',
];

/** Sends the reader to another page, which no policy of a page forbids: the export writes its "<" as "&lt;". */
export const hostileRefresh = `<MeTa http-equiv="refresh" content="0;url=${outside}/refresh">`;

/** Texts that end what surrounds them in a KML file. */
export const hostileKmlTexts = [
  ...hostileTexts,
  ']]><script>hostileRan("cdata")</script>',
  '</li></ol>]]> </description></Placemark><script>hostileRan("out")</script>',
  '</name><script>hostileRan("name")</script>',
  '&lt;img src=x onerror=hostileRan("encoded")&gt;',
  '&#60;script&#62;hostileRan("twice")&#60;/script&#62;',
];
