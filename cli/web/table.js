// The split table: a row per runner, in each cell the leg over the total.

const rowsAtOnce = 50;

class SplitTable {
  // choose(runner) is told of a click on a row, show(runner) of one on a name.
  constructor(course, chosen, choose, show) {
    this.course = course;
    this.chosen = chosen;
    this.choose = choose;
    this.show = show;
    this.sort = { key: 'time', leg: -1, descending: false };
    this.rows = new Map();
    this.body = element('tbody');
    this.head = element('thead');
    this.table = element('table', { className: 'splits' }, this.head, this.body);
    this.drawHead();
    this.fill();
  }

  sortButton(caption, tooltip, key, leg = -1) {
    const sorted = this.sort.key === key && this.sort.leg === leg;
    const mark = sorted ? (this.sort.descending ? ' ▾' : ' ▴') : '';
    return element('button', {
      type: 'button', className: sorted ? 'sort sorted' : 'sort', title: tooltip,
      onclick: () => this.sortBy(key, leg),
    }, caption + mark);
  }

  headCell(className, key, ...children) {
    const cell = element('th', { className, scope: 'col' }, ...children);
    if (this.sort.key === key && this.sort.leg === -1) {
      cell.setAttribute('aria-sort', this.sort.descending ? 'descending' : 'ascending');
    }
    return cell;
  }

  drawHead() {
    const course = this.course;
    const row = element('tr', null,
      this.headCell('place', '', word('place')),
      this.headCell('who', 'name', this.sortButton(word('name'), word('sortByName'), 'name'),
        this.sortButton(word('club'), word('sortByClub'), 'club')),
      this.headCell('', 'start', this.sortButton(word('startTime'), word('sortByStartTime'), 'start')),
      this.headCell('', 'time', this.sortButton(word('finishTime'), word('sortByFinishTime'), 'time')),
      this.headCell('', '', word('finishTimeDifference')));
    course.legs.forEach((_, leg) => {
      const where = leg === course.legs.length - 1 ? word('finish') : word('control') + ' ' + (leg + 1);
      row.append(this.headCell('leg', '', element('span', null, legText(course, leg)),
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
  }

  // Rows come in portions, so that a large class can be read and used while it is still drawn.
  fill() {
    const order = sortedRunners(this.course, this.sort);
    const filling = {};
    this.filling = filling;
    let next = 0;
    const step = () => {
      if (this.filling !== filling) return;
      const rows = order.slice(next, next + rowsAtOnce).map(index => this.row(index));
      if (next === 0) this.body.prepend(...rows);
      else this.body.append(...rows);
      next += rowsAtOnce;
      if (next < order.length) requestAnimationFrame(step);
    };
    step();
  }

  row(index) {
    let row = this.rows.get(index);
    if (!row) {
      row = this.makeRow(index);
      this.rows.set(index, row);
    }
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
    element('td', { className: 'result' }, timeText(runner.time, course.digits)),
    element('td', { className: 'result' }, runner.time === null
      ? statusText(runner) : behindText(runner.time - best, course.digits)));
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
