// The chart: time behind the best at each control, a line per chosen runner.

const lineColours = ['#1f77b4', '#d9480f', '#2b8a3e', '#a61e4d', '#6741d9', '#0b7285', '#8d6e0f',
  '#c2255c', '#495057', '#5c940d'];

function colourOf(place) {
  return lineColours[place % lineColours.length];
}

// Where the controls stand: as far along as the best time there is of the best time at the finish.
function controlPositions(course) {
  const best = course.legs.map(leg => leg.bestTotal);
  const last = best[best.length - 1];
  const known = last > 0 && best.every((time, i) => time !== null && (i === 0 || time >= best[i - 1]));
  return [0].concat(best.map((time, i) => known ? time / last : (i + 1) / best.length));
}

// Seconds between two lines of the grid, so that there are no more than eight.
function gridStep(most) {
  const steps = [5, 10, 20, 30, 60, 120, 300, 600, 1200, 1800, 3600, 7200, 14400];
  return (steps.find(step => most / step <= 8) || Math.ceil(most / 8 / 3600) * 3600);
}

function behindAt(course, runner, leg) {
  const total = runner.total[leg];
  const best = course.legs[leg].bestTotal;
  return total === null || best === null ? null : total - best;
}

// Labels at the right ends of lines, moved apart where they would cover each other.
function spread(labels, height, lineHeight) {
  labels.sort((a, b) => a.y - b.y);
  labels.forEach((label, i) => {
    if (i > 0) label.y = Math.max(label.y, labels[i - 1].y + lineHeight);
  });
  for (let i = labels.length - 1; i >= 0; --i) {
    const limit = i === labels.length - 1 ? height : labels[i + 1].y - lineHeight;
    labels[i].y = Math.min(labels[i].y, limit);
  }
}

function drawChart(course, chosen, width) {
  const runners = [...chosen].map(index => course.runners[index]);
  const height = Math.max(240, Math.min(420, width * 0.5));
  const labelWidth = Math.min(150, width * 0.28);
  const plot = { left: 46, top: 22, right: width - labelWidth - 8, bottom: height - 10 };
  const positions = controlPositions(course);
  const x = i => plot.left + positions[i] * (plot.right - plot.left);
  let most = 1000;
  for (const runner of runners) {
    course.legs.forEach((_, leg) => { most = Math.max(most, behindAt(course, runner, leg) || 0); });
  }
  const y = behind => plot.top + behind / most * (plot.bottom - plot.top);
  const chart = drawing('svg', {
    viewBox: '0 0 ' + width + ' ' + height, width, height, role: 'img', 'aria-label': word('chart'),
  });
  drawGrid(chart, plot, positions, x, y, most);
  const labels = runners.map((runner, i) => drawLine(chart, course, runner, colourOf(i), x, y));
  const shown = labels.filter(label => label !== null);
  spread(shown, plot.bottom, 13);
  for (const label of shown) {
    const text = drawing('text', { x: plot.right + 6, y: label.y + 4, fill: label.colour });
    text.textContent = label.name.length > 22 ? label.name.slice(0, 21) + '…' : label.name;
    chart.append(text);
  }
  return chart;
}

function drawGrid(chart, plot, positions, x, y, most) {
  const step = gridStep(most / 100) * 100;
  for (let behind = 0; behind <= most; behind += step) {
    const text = drawing('text', { x: plot.left - 6, y: y(behind) + 4, class: 'axis end' });
    text.textContent = timeText(behind);
    chart.append(drawing('line', {
      x1: plot.left, x2: plot.right, y1: y(behind), y2: y(behind), class: 'grid',
    }), text);
  }
  let free = 0;
  positions.forEach((_, i) => {
    chart.append(drawing('line', { x1: x(i), x2: x(i), y1: plot.top, y2: plot.bottom, class: 'grid' }));
    if (x(i) < free) return;
    const text = drawing('text', { x: x(i), y: plot.top - 8, class: 'axis middle' });
    text.textContent = i === 0 ? word('startName')
      : i === positions.length - 1 ? word('finishName') : String(i);
    chart.append(text);
    free = x(i) + 16;
  });
}

// A line is broken where there is no time. Its label stands at its last point; without one, none.
function drawLine(chart, course, runner, colour, x, y) {
  let path = '';
  let open = false;
  let label = null;
  const point = (i, behind) => {
    path += (open ? 'L' : 'M') + x(i).toFixed(1) + ' ' + y(behind).toFixed(1);
    open = true;
  };
  const dots = drawing('g', { fill: colour });
  point(0, 0);
  course.legs.forEach((_, leg) => {
    const behind = behindAt(course, runner, leg);
    if (behind === null) {
      open = false;
      return;
    }
    point(leg + 1, behind);
    const tip = drawing('title');
    tip.textContent = runner.name + '\n' + legText(course, leg) + ': ' + behindText(behind, course.digits);
    dots.append(drawing('circle', { cx: x(leg + 1).toFixed(1), cy: y(behind).toFixed(1), r: 3 }, tip));
    label = { name: runner.name, y: y(behind), colour };
  });
  chart.append(drawing('path', { d: path, stroke: colour, class: 'line' }), dots);
  return label;
}
