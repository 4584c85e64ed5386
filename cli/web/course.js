// The courses of the event, each unpacked when it is first looked at.

const event = read('event');
const classes = read('classes');
const unpacked = new Map();

function courseAt(index) {
  if (!unpacked.has(index)) unpacked.set(index, read('course-' + index));
  return unpacked.get(index);
}

// "2-3 (33)": from the second control to the third, which has the code 33.
function legText(course, leg) {
  const last = course.legs.length - 1;
  const begin = leg === 0 ? word('startName') : String(leg);
  const end = leg === last ? word('finishName') : String(leg + 1);
  const code = course.legs[leg].code;
  return begin + '-' + end + (leg === last || code === null ? '' : ' (' + code + ')');
}

// How a runner stands in a column, for sorting: null comes last.
function sortValue(runner, key, leg) {
  switch (key) {
    case 'name': return runner.order[0];
    case 'club': return runner.order[1];
    case 'start': return runner.start;
    case 'leg': return runner.leg[leg];
    case 'total': return runner.total[leg];
    default: return runner.time;
  }
}

// The runners' numbers in the order of a column. Equal ones keep the order of the results.
function sortedRunners(course, sort) {
  const order = course.runners.map((_, index) => index);
  const value = index => sortValue(course.runners[index], sort.key, sort.leg);
  return order.sort((a, b) => {
    const x = value(a);
    const y = value(b);
    if (x === null || y === null) return (x === null) - (y === null) || a - b;
    return (sort.descending ? y - x : x - y) || a - b;
  });
}

// Who followed whom, by share of the course: [follower, leader, share], the largest first.
function followings(course) {
  const pairs = new Map();
  course.runners.forEach((runner, index) => {
    for (const [leg, other, share] of runner.followed) {
      const key = index * course.runners.length + other;
      pairs.set(key, (pairs.get(key) || 0) + share * course.legs[leg].share);
    }
  });
  return [...pairs]
    .map(([key, share]) => [Math.floor(key / course.runners.length), key % course.runners.length,
      share])
    .filter(pair => pair[2] >= 0.05)
    .sort((a, b) => b[2] - a[2]);
}
