/** Starting the measured programs. */
import { spawn } from 'node:child_process';

/** The environment of every measured program: no screen, no session bus, and no sandbox where the web engine refuses it (root). */
export function environment(extra = {}) {
  const asRoot = process.getuid?.() === 0 ? { QTWEBENGINE_DISABLE_SANDBOX: '1' } : {};
  return {
    ...process.env,
    QT_QPA_PLATFORM: 'offscreen',
    DBUS_SESSION_BUS_ADDRESS: 'disabled:', // else a running Wendlores would take the start over
    QTWEBENGINE_CHROMIUM_FLAGS: '--disable-gpu',
    ...asRoot,
    ...extra,
  };
}

/** Runs a program to its end and gives what it printed; anything but exit code 0 is an error. */
export function run(program, args, { env = environment(), timeout = 300_000 } = {}) {
  return new Promise((resolve, reject) => {
    const child = spawn(program, args, { env, timeout, stdio: ['ignore', 'pipe', 'pipe'] });
    let output = '';
    let errors = '';
    child.stdout.on('data', (data) => (output += data));
    child.stderr.on('data', (data) => (errors += data));
    child.on('error', reject);
    child.on('close', (code, signal) => {
      if (code === 0) resolve(output);
      else reject(new Error(`${program} ended with ${signal ?? code}\n${errors.slice(-2000)}`));
    });
  });
}

/** Starts a program and gives its number and how to end it; what it prints goes nowhere. `started` is in ms since 1970. */
export function start(program, args, { env = environment() } = {}) {
  const started = performance.timeOrigin + performance.now();
  const child = spawn(program, args, { env, stdio: 'ignore' });
  const ended = new Promise((resolve, reject) => {
    child.on('error', reject);
    child.on('exit', resolve);
  });
  const end = () => {
    child.kill('SIGTERM');
    return ended;
  };
  return { started, end, pid: child.pid };
}
