// The style and script of camtune report pages. Pages carry them inline: a report is one file
// that opens anywhere, without a network.
#pragma once

namespace camtune {
namespace cli {
namespace report {

inline constexpr char kReportStyle[] = R"CSS(
:root { --capture: #b35c00; --preview: #1f6fb2; --other: #666; --line: #ddd; }
* { box-sizing: border-box; }
body { font: 13px/1.4 system-ui, sans-serif; margin: 0; color: #222; background: #fafafa; }
header, main { padding: 0 20px; }
h1 { font-size: 20px; margin: 14px 0 2px; }
h2 { font-size: 16px; margin: 22px 0 8px; border-bottom: 2px solid var(--line); }
h3 { font-size: 13px; margin: 0; font-family: ui-monospace, monospace; }
.muted { color: #777; }
[hidden] { display: none !important; }
.cards { display: flex; flex-wrap: wrap; gap: 8px; margin: 10px 0; }
.card { background: #fff; border: 1px solid var(--line); border-radius: 6px; padding: 6px 12px; }
.card b { display: block; font-size: 18px; }
.counts { display: flex; flex-wrap: wrap; gap: 24px; align-items: flex-start; }
table { border-collapse: collapse; background: #fff; }
th, td { border: 1px solid var(--line); padding: 3px 6px; text-align: left; vertical-align: top; }
th { background: #f0f0f0; font-weight: 600; }
td.num { text-align: right; font-variant-numeric: tabular-nums; }
nav#filters { position: sticky; top: 0; z-index: 1; background: #fff; border-bottom: 1px solid var(--line);
  padding: 8px 20px; display: flex; gap: 16px; align-items: center; flex-wrap: wrap; }
nav#filters select { max-width: 220px; }
ol.strip { list-style: none; display: flex; flex-wrap: wrap; gap: 3px; padding: 0; margin: 6px 0; }
ol.strip a { display: block; min-width: 30px; padding: 1px 4px; border-radius: 3px; color: #fff;
  text-decoration: none; text-align: center; font-size: 11px; }
.capture { --series: var(--capture); } .preview { --series: var(--preview); } .unlogged { --series: var(--other); }
ol.strip a, .badge { background: var(--series); }
article.request { background: #fff; border: 1px solid var(--line); border-left: 4px solid var(--series);
  border-radius: 4px; margin: 8px 0; padding: 8px 10px; }
.badge { color: #fff; border-radius: 3px; padding: 0 5px; font-size: 11px; margin-right: 6px; }
table.records { width: 100%; margin: 6px 0; font-size: 12px; }
table.records td, table.records th { border: none; border-top: 1px solid #eee; padding: 1px 6px; }
table.records th { background: none; color: #777; font-weight: normal; }
tr.decision td.type { color: #7a3db8; } tr.execution td.type { color: #2b7a3d; }
td.text { font-family: ui-monospace, monospace; word-break: break-all; }
table.dumps { width: 100%; margin-top: 6px; }
table.dumps td.name { font-family: ui-monospace, monospace; font-size: 12px; word-break: break-all; }
table.dumps .fields { font: 11px/1.4 system-ui, sans-serif; color: #555; word-break: normal; }
td.thumb { width: 172px; text-align: center; background: #eee; }
td.thumb img { max-width: 160px; display: block; margin: auto; }
.problem { color: #b00020; }
details > summary { cursor: pointer; color: #555; }
)CSS";

// Filters dump rows by request, module and sensor. The choice lives in the address's hash
// ("#request=1:5&module=AAO"), so a filtered view can be shared and reloaded. The body's
// data-visible-rows, data-visible-requests and data-images-loaded tell scripts and tests what
// the page shows.
inline constexpr char kReportScript[] = R"JS(
(function () {
  'use strict';
  var body = document.body;
  var keys = ['request', 'module', 'sensor'];
  var selects = {};
  keys.forEach(function (key) { selects[key] = document.getElementById('f-' + key); });
  var rows = Array.prototype.slice.call(document.querySelectorAll('tr.dump'));
  var requests = Array.prototype.slice.call(document.querySelectorAll('article.request'));
  var sections = Array.prototype.slice.call(document.querySelectorAll('section.series'));

  function choose(select, value) {
    var known = Array.prototype.some.call(select.options, function (o) { return o.value === value; });
    if (!known) select.add(new Option(value + ' (none)', value));
    select.value = value;
  }
  function readHash() {
    var hash = location.hash.slice(1);
    if (hash && hash.indexOf('=') < 0) return;  // a jump to a request keeps the filters
    var params = new URLSearchParams(hash);
    keys.forEach(function (key) { choose(selects[key], params.get(key) || ''); });
  }
  function writeHash() {
    var params = new URLSearchParams();
    keys.forEach(function (key) { if (selects[key].value) params.set(key, selects[key].value); });
    var text = params.toString();
    history.replaceState(null, '', text ? '#' + text : location.pathname + location.search);
  }
  function apply() {
    var want = {};
    keys.forEach(function (key) { want[key] = selects[key].value; });
    var shownRows = 0;
    rows.forEach(function (row) {
      var show = keys.every(function (key) { return !want[key] || row.dataset[key] === want[key]; });
      row.hidden = !show;
      if (show) shownRows++;
    });
    var narrowed = want.module || want.sensor;
    var shownRequests = 0;
    requests.forEach(function (request) {
      var show = (!want.request || request.dataset.request === want.request) &&
          (!narrowed || request.querySelector('tr.dump:not([hidden])') !== null);
      request.hidden = !show;
      if (show) shownRequests++;
    });
    sections.forEach(function (section) {
      section.hidden = section.querySelector('article.request:not([hidden])') === null;
    });
    body.dataset.visibleRows = shownRows;
    body.dataset.visibleRequests = shownRequests;
    document.getElementById('shown').textContent =
        shownRows + ' of ' + rows.length + ' dumps, ' + shownRequests + ' of ' +
        requests.length + ' requests shown';
  }
  keys.forEach(function (key) {
    selects[key].addEventListener('change', function () { writeHash(); apply(); });
  });
  document.getElementById('f-clear').addEventListener('click', function () {
    keys.forEach(function (key) { selects[key].value = ''; });
    writeHash();
    apply();
  });
  window.addEventListener('hashchange', function () { readHash(); apply(); });
  readHash();
  apply();
  window.addEventListener('load', function () {
    var loaded = 0;
    Array.prototype.forEach.call(document.images, function (image) {
      if (image.complete && image.naturalWidth > 0) loaded++;
    });
    body.dataset.images = document.images.length;
    body.dataset.imagesLoaded = loaded;
  });
})();
)JS";

}  // namespace report
}  // namespace cli
}  // namespace camtune
