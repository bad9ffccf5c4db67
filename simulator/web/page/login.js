// The dialog that asks for the panel's password.
const dialog = document.getElementById('login');
const form = dialog.querySelector('form');
const password = document.getElementById('password');
const complaint = document.getElementById('complaint');
const enter = document.getElementById('enter');

let given = null; // called with the password
let cancelled = null;

function open(whenGiven, whenCancelled, sentence) {
  given = whenGiven;
  cancelled = whenCancelled;
  password.value = '';
  password.readOnly = false;
  password.setAttribute('aria-invalid', String(sentence !== ''));
  complaint.textContent = sentence;
  enter.disabled = false;
  enter.textContent = 'Connect';
  if (!dialog.open)
    dialog.showModal();
  password.focus();
}

// Calls `whenGiven` with what is typed, or `whenCancelled` after Esc or Cancel.
export function askPassword(whenGiven, whenCancelled) {
  if (!dialog.open)
    open(whenGiven, whenCancelled, '');
}

// The same after a wrong one.
export function passwordIsWrong(whenGiven, whenCancelled) {
  open(whenGiven, whenCancelled, 'Wrong password. Please try again.');
}

export function passwordIsRight() {
  if (dialog.open)
    dialog.close();
  password.value = '';
}

function cancel() {
  dialog.close();
  password.value = '';
  cancelled();
}

form.addEventListener('submit', (event) => {
  event.preventDefault();
  complaint.textContent = '';
  password.setAttribute('aria-invalid', 'false');
  password.readOnly = true;
  enter.disabled = true;
  enter.textContent = 'Connecting …'; // an answer may be held back after some wrong ones
  given(password.value);
});

dialog.addEventListener('cancel', (event) => {
  event.preventDefault();
  cancel();
});
document.getElementById('cancel').addEventListener('click', cancel);
