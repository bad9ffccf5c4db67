// Shows the panel in crisp pixels, as large as the window allows, and connects again when the program is restarted.
import RFB from './novnc/core/rfb.js';
import { askPassword, passwordIsRight, passwordIsWrong } from './login.js';
import { usePenForTouches } from './touches.js';

const PANEL = { width: 320, height: 240 };
const RECONNECT_MS = 1000;

const main = document.querySelector('main');
const router = document.getElementById('router');
const screen = document.getElementById('screen');
const footer = document.querySelector('footer');
const state = document.getElementById('state');
const connectButton = document.getElementById('connect');

let rfb = null;
let password = null; // the one that was right, or is being tried
let cancelled = false;

function show(text, look) {
  state.textContent = text;
  state.className = look;
}

// The largest whole number of device pixels for each pixel of the panel that fits the window; a part of one where not
// even that fits.
function fit() {
  const ratio = window.devicePixelRatio || 1;
  const sum = (element, ...sizes) => sizes.reduce((all, size) => all + parseFloat(getComputedStyle(element)[size]), 0);
  const around = 2 * (sum(router, 'paddingLeft', 'borderLeftWidth') + sum(main, 'paddingLeft'));
  const below = footer.offsetHeight + sum(footer, 'marginTop');
  const room = ratio * Math.min(
    (window.innerWidth - around) / PANEL.width,
    (window.innerHeight - around - below) / PANEL.height,
  );
  const zoom = (room < 1 ? room : Math.floor(room)) / ratio;
  screen.classList.toggle('shrunk', room < 1);
  screen.style.width = `${PANEL.width * zoom}px`;
  screen.style.height = `${PANEL.height * zoom}px`;

  // Centring may leave it between two device pixels, which would blur it.
  router.style.transform = '';
  const place = screen.getBoundingClientRect();
  const offset = (position) => (Math.round(position * ratio) - position * ratio) / ratio;
  router.style.transform = `translate(${offset(place.x)}px, ${offset(place.y)}px)`;
}

function connect() {
  const credentials = password === null ? {} : { password };
  const viewer = new RFB(screen, `ws://${window.location.host}/panel`, {
    shared: true, wsProtocols: ['binary'], credentials,
  });
  let refused = false;
  rfb = viewer;
  cancelled = false;
  connectButton.hidden = true;
  viewer.scaleViewport = true;
  viewer.background = '#000';
  viewer.focusOnClick = false; // the panel has no keyboard: keys stay the browser's
  viewer.addEventListener('connect', () => {
    passwordIsRight();
    show('connected', 'connected');
  });
  viewer.addEventListener('desktopname', (event) => {
    document.title = event.detail.name;
    document.getElementById('program').textContent = event.detail.name;
  });
  viewer.addEventListener('credentialsrequired', () => {
    show('waiting for the password', '');
    askPassword(tryPassword, cancel);
  });
  viewer.addEventListener('securityfailure', () => { refused = true; });
  viewer.addEventListener('disconnect', () => {
    if (rfb !== viewer)
      return;
    rfb = null;
    screen.replaceChildren();
    if (refused)
      refuse();
    else if (!cancelled)
      waitForNext();
  });
}

function tryPassword(given) {
  password = given;
  show('connecting', '');
  if (rfb)
    rfb.sendCredentials({ password });
  else
    connect();
}

function refuse() {
  password = null;
  show('waiting for the password', '');
  passwordIsWrong(tryPassword, cancel);
}

function cancel() {
  cancelled = true;
  password = null;
  show('not connected', 'gone');
  connectButton.hidden = false;
  connectButton.focus();
  rfb?.disconnect();
}

// Somebody who is thinking about the password is not disturbed: his answer connects anew.
function waitForNext() {
  if (document.getElementById('login').open && password === null)
    return;
  show('the simulator has ended, waiting for the next', 'gone');
  setTimeout(() => { if (!rfb && !cancelled) connect(); }, RECONNECT_MS);
}

connectButton.addEventListener('click', () => {
  show('connecting', '');
  connect();
});
usePenForTouches(screen);
window.addEventListener('resize', fit);
window.addEventListener('contextmenu', (event) => event.preventDefault());
fit();
connect();
