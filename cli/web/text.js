// Words, times and elements.

const captions = read('captions');
let words = captions.en;

function read(id) {
  return JSON.parse(document.getElementById('data-' + id).textContent);
}

function word(key) {
  return words[key] || captions.en[key] || '';
}

// An element with its properties, attributes (names with a hyphen, role) and children. Texts of
// the event only ever become text nodes.
function element(name, properties, ...children) {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(properties || {})) {
    if (key.includes('-') || key === 'role' || key === 'scope') made.setAttribute(key, value);
    else made[key] = value;
  }
  made.append(...children);
  return made;
}

function drawing(name, attributes, ...children) {
  const made = document.createElementNS('http://www.w3.org/2000/svg', name);
  for (const [key, value] of Object.entries(attributes || {})) made.setAttribute(key, value);
  made.append(...children);
  return made;
}

function two(number) {
  return String(number).padStart(2, '0');
}

// Hundredths as h:mm:ss or m:ss with as many digits behind as the course has; what is smaller is
// cut off. null is no time.
function timeText(time, digits = 0) {
  if (time === null || time === undefined) return '';
  const delimiters = word('timeDelimiters') || '::.';
  const size = Math.abs(time);
  const seconds = Math.floor(size / 100);
  const hours = Math.floor(seconds / 3600);
  const minutes = Math.floor(seconds / 60) % 60;
  let text = hours > 0 ? hours + delimiters[0] + two(minutes) : String(minutes);
  text += delimiters[1] + two(seconds % 60);
  if (digits > 0) text += delimiters[2] + two(size % 100).slice(0, digits);
  return (time < 0 ? '-' : '') + text;
}

function behindText(time, digits) {
  if (time === null || time === undefined) return '';
  return (time < 0 ? '' : '+') + timeText(time, digits);
}

function clockText(time, digits) {
  if (time === null) return '';
  const delimiters = word('timeDelimiters') || '::.';
  const seconds = Math.floor(time / 100);
  const text = Math.floor(seconds / 3600) + delimiters[0] + two(Math.floor(seconds / 60) % 60) +
    delimiters[1] + two(seconds % 60);
  return digits > 0 ? text + delimiters[2] + two(time % 100).slice(0, digits) : text;
}

function percentText(share) {
  return Math.round(share * 100) + ' %';
}

// What stands in place of a result.
function statusText(runner) {
  return runner.status === '' ? '-' : word('status_' + runner.status);
}
