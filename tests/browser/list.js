// Small result lists, written for the tests.

const escaped = text => text.replace(/[&<>"]/g, c => `&#${c.charCodeAt(0)};`);

// Legs in seconds; null is a missing control.
function person({ name, club = 'OK Test', start = 0, legs, status = 'OK' }) {
  let time = 0;
  const splits = legs.slice(0, -1).map((leg, i) => {
    if (leg === null) return `<SplitTime status="Missing"><ControlCode>${31 + i}</ControlCode></SplitTime>`;
    time += leg;
    return `<SplitTime><ControlCode>${31 + i}</ControlCode><Time>${time}</Time></SplitTime>`;
  });
  time += legs[legs.length - 1];
  const clock = new Date(Date.UTC(2026, 4, 3, 10) + start * 1000).toISOString().slice(0, 19);
  return `<PersonResult><Person><Name><Family>${escaped(name)}</Family><Given></Given></Name></Person>
<Organisation><Name>${escaped(club)}</Name></Organisation><Result><StartTime>${clock}</StartTime>
<Time>${time}</Time><Status>${status}</Status>${splits.join('')}</Result></PersonResult>`;
}

export function list(event, classes) {
  const results = Object.entries(classes).map(([name, runners]) =>
    `<ClassResult><Class><Name>${escaped(name)}</Name></Class>${runners.map(person).join('\n')}</ClassResult>`);
  return `<?xml version="1.0" encoding="UTF-8"?>
<ResultList xmlns="http://www.orienteering.org/datastandard/3.0" iofVersion="3.0">
<Event><Name>${escaped(event)}</Name><StartTime><Date>2026-05-03</Date></StartTime></Event>
${results.join('\n')}</ResultList>`;
}
