// A finger is the pen: down where it lands, at once, and up where it leaves. noVNC would wait whether a gesture comes of
// it. A second finger is nothing, as on the router's panel.

// Which of noVNC's mouse events a finger becomes; moves and ends are looked for where noVNC captures the mouse.
function passOn(canvas, type, touch) {
  const isBegin = type === 'mousedown';
  const target = isBegin || canvas.setCapture ? canvas : window;
  target.dispatchEvent(new MouseEvent(type, {
    bubbles: true, cancelable: true, button: 0, buttons: type === 'mouseup' ? 0 : 1, clientX: touch.clientX, clientY: touch.clientY,
  }));
}

export function usePenForTouches(screen) {
  let pen = null; // the finger's identifier
  let canvas = null;

  const takeOver = (event) => {
    event.preventDefault();
    event.stopPropagation();
    return [...event.changedTouches].find((touch) => touch.identifier === pen);
  };
  const end = (event) => {
    const touch = takeOver(event);
    if (!touch)
      return;
    pen = null;
    passOn(canvas, 'mouseup', touch);
  };

  const options = { capture: true, passive: false };
  screen.addEventListener('touchstart', (event) => {
    takeOver(event);
    if (pen !== null || event.target.tagName !== 'CANVAS')
      return;
    canvas = event.target;
    pen = event.changedTouches[0].identifier;
    passOn(canvas, 'mousedown', event.changedTouches[0]);
  }, options);
  screen.addEventListener('touchmove', (event) => {
    const touch = takeOver(event);
    if (touch)
      passOn(canvas, 'mousemove', touch);
  }, options);
  screen.addEventListener('touchend', end, options);
  screen.addEventListener('touchcancel', end, options);
}
