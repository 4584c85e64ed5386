// One runner's race, in a window over the page.

function runnerView(course, index) {
  const runner = course.runners[index];
  const digits = course.digits;
  const partners = list => leg => list.filter(entry => entry[0] === leg)
    .sort((a, b) => b[2] - a[2]).slice(0, 3)
    .map(([, other, share]) => course.runners[other].name + ' ' + percentText(share)).join(', ');
  const followed = partners(runner.followed);
  const columns = [
    [word('leg'), leg => legText(course, leg)],
    [word('finishTime'), leg => timeText(runner.leg[leg], digits)],
    [word('place'), leg => runner.legPlace[leg] || ''],
    [word('behindBest'), leg => runner.leg[leg] === null || course.legs[leg].best === null
      ? '' : behindText(runner.leg[leg] - course.legs[leg].best, digits)],
    [word('lost'), leg => runner.loss[leg] > 0 ? timeText(runner.loss[leg], digits) : ''],
    [word('performance'), leg => runner.index[leg] === null ? '' : percentText(runner.index[leg])],
    [word('total'), leg => timeText(runner.total[leg], digits)],
    [word('place'), leg => runner.totalPlace[leg] || ''],
    [word('behindBest'), leg => behindText(behindAt(course, runner, leg), digits)],
    [word('followed'), followed],
  ];
  const head = element('tr', null, ...columns.map(column =>
    element('th', { scope: 'col', title: column[0] === word('performance') ? word('performanceHint') : '' },
      column[0])));
  const rows = course.legs.map((_, leg) => element('tr', { className: runner.loss[leg] > 0 ? 'loss' : '' },
    ...columns.map((column, i) => element(i === 0 ? 'th' : 'td', i === 0 ? { scope: 'row' } : null,
      String(column[1](leg))))));
  return [
    element('h2', null, runner.name || '-'),
    element('p', null, factsOf(course, runner).join(' · ')),
    element('div', { className: 'scroll', tabIndex: 0 },
      element('table', { className: 'race' }, element('thead', null, head), element('tbody', null, ...rows))),
  ];
}

function factsOf(course, runner) {
  const digits = course.digits;
  const facts = [];
  if (runner.club) facts.push(runner.club);
  facts.push(runner.time === null ? statusText(runner)
    : (runner.place === null ? '' : runner.place + '. ') + timeText(runner.time, digits));
  const lost = runner.loss.reduce((sum, loss) => sum + loss, 0);
  if (lost > 0) facts.push(word('timeLoss') + ' ' + timeText(lost, digits));
  if (runner.performance !== null) {
    facts.push(word('performance') + ' ' + percentText(runner.performance));
  }
  const followed = followings(course).filter(pair => course.runners[pair[0]] === runner).slice(0, 3);
  for (const [, leader, share] of followed) {
    facts.push(word('followed') + ' ' + course.runners[leader].name + ': ' + percentText(share) + ' ' +
      word('ofTheCourse'));
  }
  return facts;
}
