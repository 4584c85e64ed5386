// The page: classes on one side, the chosen class with its chart and table on the other.

const parts = Object.fromEntries(['title', 'about', 'language', 'search', 'classes', 'content', 'race']
  .map(id => [id, document.getElementById(id)]));
const state = { index: 0, chosen: new Set(), table: null };

function chooseLanguage(code) {
  words = captions[code];
  document.documentElement.lang = code;
  parts.language.value = code;
  parts.search.placeholder = word('searchClass');
  parts.search.setAttribute('aria-label', word('searchClass'));
  parts.language.setAttribute('aria-label', word('languageCaption'));
  parts.classes.setAttribute('aria-label', word('classes'));
  listClasses();
  if (classes.length > 0) showClass(state.index, state.chosen);
}

// Classes whose name holds what is sought, and runners, with their class, whose name does.
function listClasses() {
  const sought = parts.search.value.trim().toLowerCase();
  const entry = (index, text, detail, open) => element('button', {
    type: 'button', 'aria-current': String(index === state.index), onclick: open,
  }, text, element('small', null, detail));
  const found = [];
  classes.forEach((one, index) => {
    if (!one.name.toLowerCase().includes(sought)) return;
    found.push(entry(index, one.name || '-', one.names.length + ' ' +
      word(one.names.length === 1 ? 'runner' : 'runners'), () => showClass(index)));
  });
  if (sought.length > 1) {
    classes.forEach((one, index) => one.names.forEach((name, runner) => {
      if (found.length >= 200 || !name.toLowerCase().includes(sought)) return;
      found.push(entry(-1, name, one.name, () => {
        showClass(index);
        openRace(runner);
      }));
    }));
  }
  const focused = [...parts.classes.children].indexOf(document.activeElement);
  parts.classes.replaceChildren(...(found.length > 0 ? found : [element('p', null, word('nothingFound'))]));
  if (focused >= 0) parts.classes.children[Math.min(focused, parts.classes.children.length - 1)].focus();
}

function showClass(index, chosen) {
  const one = classes[index];
  const course = courseAt(index);
  const first = course.runners.map((_, i) => i).filter(i => course.runners[i].time !== null).slice(0, 3);
  state.index = index;
  state.chosen = chosen || new Set(first);
  listClasses();
  const facts = [one.names.length + ' ' + word(one.names.length === 1 ? 'runner' : 'runners')];
  if (course.length !== null) facts.push((course.length / 100000).toFixed(2) + ' km');
  const children = [element('h2', null, one.name || '-'), element('p', null, facts.join(' · '))];
  if (course.runners.length > 0) children.push(...classContents(course));
  else children.push(element('p', null, word('noRunners')));
  if (course.refused.length > 0) {
    children.push(element('h3', null, word('notOnCourse')), element('p', null, course.refused.join(', ')));
  }
  parts.content.replaceChildren(...children);
  if (course.runners.length > 0) {
    state.table.showRows();
    drawChosen();
  }
  history.replaceState(null, '', '#' + index);
}

function classContents(course) {
  state.table = new SplitTable(course, state.chosen, toggle, openRace);
  const followed = followings(course).slice(0, 30);
  const contents = [
    element('h3', null, word('chart')),
    element('p', { className: 'hint advice' }, word('chartHint') + ' ', element('button', {
      type: 'button', className: 'plain', onclick: () => [...state.chosen].forEach(toggle),
    }, word('chooseNone'))),
    element('div', { id: 'chart' }),
    element('h3', null, word('splitTable')),
    element('p', { className: 'hint' }, ...legend()),
    element('div', { className: 'scroll', tabIndex: 0, role: 'region', 'aria-label': word('splitTable'),
      onscroll: () => state.table.showRows() }, state.table.table),
  ];
  if (followed.length > 0) {
    contents.push(element('h3', null, word('followed')), element('ul', { className: 'followed' },
      ...followed.map(([follower, leader, share]) => element('li', null,
        course.runners[follower].name + ' → ' + course.runners[leader].name + ': ' + percentText(share) +
        ' ' + word('ofTheCourse')))));
  }
  return contents;
}

function legend() {
  return [['best', 'best'], ['top', 'among'], ['loss', 'timeLoss'], ['estimated', 'estimatedTime']]
    .map(([look, key]) => element('span', { className: 'key ' + look }, word(key)));
}

function toggle(index) {
  if (!state.chosen.delete(index)) state.chosen.add(index);
  state.table.mark(index, state.chosen.has(index));
  drawChosen();
}

function drawChosen() {
  const host = document.getElementById('chart');
  if (host) host.replaceChildren(drawChart(courseAt(state.index), state.chosen, host.clientWidth || 640));
}

function openRace(runner) {
  const close = element('button', { type: 'button', className: 'close', onclick: () => parts.race.close() },
    word('close'));
  parts.race.replaceChildren(close, ...runnerView(courseAt(state.index), runner));
  parts.race.showModal();
}

function begin() {
  const preferred = [document.documentElement.dataset.language].concat(navigator.languages || [])
    .map(code => (code || '').slice(0, 2)).map(code => code === 'no' || code === 'nn' ? 'nb' : code)
    .find(code => captions[code]);
  document.title = event.name;
  parts.title.textContent = event.name;
  parts.about.textContent = [event.date, event.organiser].filter(text => text).join(' · ');
  for (const code of Object.keys(captions)) {
    parts.language.append(element('option', { value: code }, captions[code].languageName));
  }
  parts.language.onchange = () => chooseLanguage(parts.language.value);
  parts.search.oninput = listClasses;
  parts.race.onclick = click => { if (click.target === parts.race) parts.race.close(); };
  let waiting = 0;
  window.addEventListener('resize', () => {
    cancelAnimationFrame(waiting);
    waiting = requestAnimationFrame(drawChosen);
  });
  window.addEventListener('beforeprint', () => state.table && state.table.showRows(true));
  window.addEventListener('afterprint', () => state.table && state.table.showRows());
  const asked = Number.parseInt(location.hash.slice(1), 10);
  if (asked >= 0 && asked < classes.length) state.index = asked;
  state.chosen = null;
  chooseLanguage(preferred || 'en');
}

begin();
