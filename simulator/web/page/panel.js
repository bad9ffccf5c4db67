// Shows the panel in crisp pixels, as large as the window allows, and connects again when the program is restarted.
import RFB from './novnc/core/rfb.js';

const PANEL = { width: 320, height: 240 };
const AROUND = { width: 60, height: 110 }; // what the case and the line below it need, in CSS pixels
const RECONNECT_MS = 1000;

const router = document.getElementById('router');
const screen = document.getElementById('screen');
const state = document.getElementById('state');
const login = document.getElementById('login');
let rfb = null;

function show(text, look) {
  state.textContent = text;
  state.className = look;
}

// The largest whole number of device pixels for each pixel of the panel that fits the window.
function fit() {
  const ratio = window.devicePixelRatio || 1;
  const room = Math.min((window.innerWidth - AROUND.width) / PANEL.width, (window.innerHeight - AROUND.height) / PANEL.height);
  const zoom = Math.max(1, Math.floor(room * ratio)) / ratio;
  screen.style.width = `${PANEL.width * zoom}px`;
  screen.style.height = `${PANEL.height * zoom}px`;

  // Centring may leave it between two device pixels, which would blur it.
  router.style.transform = '';
  const place = screen.getBoundingClientRect();
  const offset = (position) => (Math.round(position * ratio) - position * ratio) / ratio;
  router.style.transform = `translate(${offset(place.x)}px, ${offset(place.y)}px)`;
}

function connect() {
  rfb = new RFB(screen, `ws://${window.location.host}/panel`, { shared: true, wsProtocols: ['binary'] });
  rfb.scaleViewport = true;
  rfb.background = '#000';
  rfb.focusOnClick = true;
  rfb.addEventListener('connect', () => {
    login.hidden = true;
    show('connected', 'connected');
  });
  rfb.addEventListener('desktopname', (event) => {
    document.title = event.detail.name;
    document.getElementById('program').textContent = event.detail.name;
  });
  rfb.addEventListener('credentialsrequired', () => {
    login.hidden = false;
    document.getElementById('password').focus();
  });
  rfb.addEventListener('securityfailure', () => show('the password is wrong', 'gone'));
  rfb.addEventListener('disconnect', () => {
    if (state.className !== 'gone')
      show('the simulator has ended, waiting for the next', 'gone');
    screen.replaceChildren();
    setTimeout(connect, RECONNECT_MS);
  });
}

login.addEventListener('submit', (event) => {
  event.preventDefault();
  rfb.sendCredentials({ password: document.getElementById('password').value });
  document.getElementById('password').value = '';
});

window.addEventListener('resize', fit);
window.addEventListener('contextmenu', (event) => event.preventDefault());
fit();
connect();
