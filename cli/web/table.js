// The split table: a row per runner, in each cell the leg over the total.

// A table of more rows holds only those near the part that is seen.
const mostRows = 120;
const rowsBeyond = 15;

// Stands for rows that are not there.
class Gap {
  constructor() {
    this.row = element('tr', { className: 'gap', 'aria-hidden': 'true' });
  }

  set height(height) {
    this.row.style.height = height + 'px';
    this.row.hidden = height === 0;
  }
}

class SplitTable {
  // choose(runner) is told of a click on a row, show(runner) of one on a name.
  constructor(course, chosen, choose, show) {
    this.course = course;
    this.chosen = chosen;
    this.choose = choose;
    this.show = show;
    this.sort = { key: 'time', leg: -1, descending: false };
    this.rows = new Map();
    this.above = new Gap();
    this.below = new Gap();
    this.body = element('tbody', null, this.above.row, this.below.row);
    this.head = element('thead');
    this.table = element('table', { className: 'splits' }, this.head, this.body);
    this.setColumns();
    this.drawHead();
    this.fill();
  }

  // Columns of fixed width: the browser need not look at all rows to lay out some. On paper all
  // legs are as wide as the widest.
  setColumns() {
    const digits = this.course.digits;
    const longest = texts => Math.max(5, ...texts.map(text => text.length));
    const legs = this.course.legs.map((_, leg) => {
      const times = this.course.runners.map(runner => timeText(runner.total[leg], digits));
      return Math.max(longest(times) + 5, legText(this.course, leg).length + 1, 11);
    });
    const group = element('colgroup');
    for (const width of [3, 17, 9 + digits, 8 + digits, 8 + digits, ...legs]) {
      const column = element('col');
      column.style.width = width + 'ch';
      group.append(column);
    }
    this.table.prepend(group);
    this.table.style.setProperty('--leg', Math.max(11, ...legs) + 'ch');
    this.table.style.setProperty('--clock', 9 + digits + 'ch');
  }

  sortButton(caption, tooltip, key, leg = -1) {
    const sorted = this.sort.key === key && this.sort.leg === leg;
    const mark = sorted ? (this.sort.descending ? ' ▾' : ' ▴') : '';
    return element('button', {
      type: 'button', className: sorted ? 'sort sorted' : 'sort', title: tooltip,
      onclick: () => this.sortBy(key, leg),
    }, caption + mark);
  }

  headCell(className, ...children) {
    const cell = element('th', { className, scope: 'col' }, ...children);
    if (cell.querySelector('.sorted')) {
      cell.setAttribute('aria-sort', this.sort.descending ? 'descending' : 'ascending');
    }
    return cell;
  }

  drawHead() {
    const course = this.course;
    const row = element('tr', null,
      this.headCell('place', element('b', null, word('place'))),
      this.headCell('who', this.sortButton(word('name'), word('sortByName'), 'name'),
        this.sortButton(word('club'), word('sortByClub'), 'club')),
      this.headCell('clock', this.sortButton(word('startTime'), word('sortByStartTime'), 'start')),
      this.headCell('result', this.sortButton(word('finishTime'), word('sortByFinishTime'), 'time')),
      this.headCell('result', element('b', null, word('finishTimeDifference'))));
    course.legs.forEach((_, leg) => {
      const where = leg === course.legs.length - 1 ? word('finish') : word('control') + ' ' + (leg + 1);
      row.append(this.headCell('leg', element('span', null, legText(course, leg)),
        this.sortButton(word('legTimeSortCaption'), word('sortByLegTime') + ' ' + where, 'leg', leg),
        this.sortButton(word('totalTimeSortCaption'), word('sortByTotalTime') + ' ' + where, 'total', leg)));
    });
    this.head.replaceChildren(row);
  }

  sortBy(key, leg) {
    const same = this.sort.key === key && this.sort.leg === leg;
    this.sort = { key, leg, descending: same && !this.sort.descending };
    this.drawHead();
    this.fill();
    this.head.querySelector('.sorted').focus({ preventScroll: true });
  }

  fill() {
    this.order = sortedRunners(this.course, this.sort);
    this.table.setAttribute('aria-rowcount', this.order.length + 1);
    this.first = this.last = 0;
    this.showRows();
  }

  // The rows around what is seen of the table in its scrolling box; all of them for a printer.
  showRows(all = false) {
    const count = this.order.length;
    const whole = all || count <= mostRows;
    const box = this.table.parentElement;
    const height = this.rowHeight();
    const seen = whole || !box ? 0 : Math.floor(box.scrollTop / height);
    const first = whole ? 0 : Math.max(0, seen - rowsBeyond);
    const last = whole ? count : Math.min(count, seen + Math.ceil((box ? box.clientHeight : 0) / height) + rowsBeyond);
    const moved = Math.max(Math.abs(first - this.first), Math.abs(last - this.last));
    if (moved === 0 || (!whole && moved < rowsBeyond / 2 && first > 0 && last < count)) return;
    this.replaceRows(first, last);
    this.above.height = first * height;
    this.below.height = (count - last) * height;
  }

  // Rows that stay are not touched: to lay out all of them anew takes long.
  replaceRows(first, last) {
    const rows = this.order.slice(first, last).map((index, i) => this.row(index, first + i));
    const overlap = Math.max(first, this.first) < Math.min(last, this.last);
    const stayFrom = overlap ? Math.max(first, this.first) : first;
    const stayTo = overlap ? Math.min(last, this.last) : first;
    const staying = new Set(rows.slice(stayFrom - first, stayTo - first));
    for (const row of this.body.querySelectorAll('tr:not(.gap)')) {
      if (!staying.has(row)) row.remove();
    }
    this.above.row.after(...rows.slice(0, stayFrom - first));
    this.below.row.before(...rows.slice(stayTo - first));
    this.first = first;
    this.last = last;
  }

  rowHeight() {
    const shown = [...this.rows.values()].find(row => row.offsetHeight > 0);
    return shown ? shown.offsetHeight : 45;
  }

  row(index, position) {
    let row = this.rows.get(index);
    if (!row) {
      row = this.makeRow(index);
      this.rows.set(index, row);
    }
    row.setAttribute('aria-rowindex', position + 2);  // behind the heading
    return row;
  }

  makeRow(index) {
    const course = this.course;
    const runner = course.runners[index];
    const best = course.runners[0].time;
    const name = element('button', {
      type: 'button', className: 'name', title: word('showRunner'),
      onclick: event => { event.stopPropagation(); this.show(index); },
    }, runner.name || '-');
    const row = element('tr', {
      tabIndex: 0, 'aria-selected': String(this.chosen.has(index)),
      onclick: () => this.choose(index),
      onkeydown: event => {
        if (event.target !== row || (event.key !== 'Enter' && event.key !== ' ')) return;
        event.preventDefault();
        this.choose(index);
      },
    },
    element('td', { className: 'place' }, runner.place === null ? '' : String(runner.place)),
    element('td', { className: 'who' }, name, element('span', { className: 'club' }, runner.club)),
    element('td', { className: 'clock' }, clockText(runner.start, course.digits)),
    element('td', { className: 'result' }, element('b', null, timeText(runner.time, course.digits))),
    element('td', { className: 'result' }, element('b', null, runner.time === null
      ? statusText(runner) : behindText(runner.time - best, course.digits))));
    course.legs.forEach((_, leg) => row.append(this.cell(runner, leg)));
    return row;
  }

  cell(runner, leg) {
    const digits = this.course.digits;
    const line = (name, time, place, estimated) => {
      const rank = estimated ? ' estimated' : place === 1 ? ' best' : place > 0 && place <= 3 ? ' top' : '';
      const made = element('span', { className: name + rank }, timeText(time, digits));
      if (place > 0) made.dataset.place = place;
      return made;
    };
    const cell = element('td', null,
      line('own', runner.leg[leg], runner.legPlace[leg], runner.estimated.includes(leg)),
      line('sum', runner.total[leg], runner.totalPlace[leg], runner.estimatedTotal.includes(leg)));
    const notes = [];
    if (runner.loss[leg] > 0) {
      cell.className = 'loss';
      notes.push(word('timeLoss') + ': ' + timeText(runner.loss[leg], digits));
    }
    if (runner.estimated.includes(leg)) notes.push(word('estimatedTime'));
    if (notes.length > 0) cell.title = notes.join('\n');
    return cell;
  }

  mark(index, on) {
    const row = this.rows.get(index);
    if (row) row.setAttribute('aria-selected', String(on));
  }
}
