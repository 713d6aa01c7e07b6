// Stands in for the host, so that the page can be tried in any browser: keeps the note in the browser's own storage.
const say = (name) => (body) => console.log(name, body);
const handler = (act) => ({ postMessage: act });
window.webkit = {
  messageHandlers: {
    ready: handler(() => {
      window.VaultEditor.setTheme(matchMedia("(prefers-color-scheme: dark)").matches ? "dark" : "light");
      window.VaultEditor.setContent(localStorage.getItem("note") ?? "# Ny not\n\nSkriv här.\n");
    }),
    changed: handler((text) => localStorage.setItem("note", text)),
    selection: handler(say("selection")),
    openLink: handler(say("openLink")),
  },
};
