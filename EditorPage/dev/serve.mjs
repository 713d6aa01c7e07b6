// Serves the built page on loopback with the host's stand-in before it: node dev/serve.mjs [BUCKET] [PORT]
import { createServer } from "node:http";
import { readFile } from "node:fs/promises";
import { extname, join, normalize } from "node:path";
import { fileURLToPath } from "node:url";

const here = fileURLToPath(new URL(".", import.meta.url));
const dist = join(here, "../../WendloreKit/Resources/dist");
const [bucket = ".", port = "4173"] = process.argv.slice(2);
const types = { ".html": "text/html", ".js": "text/javascript", ".css": "text/css", ".svg": "image/svg+xml", ".woff2": "font/woff2", ".png": "image/png" };

function fileFor(path) {
  if (path === "/" || path === "/index.html") return join(dist, "index.html");
  if (path === "/stand-in.js") return join(here, "stand-in.js");
  return path.startsWith("/assets/") ? join(bucket, normalize(path)) : join(dist, normalize(path));
}

const server = createServer(async (request, response) => {
  const file = fileFor(decodeURIComponent(new URL(request.url, "http://localhost").pathname));
  try {
    let body = await readFile(file);
    if (file.endsWith("index.html")) body = String(body).replace("<script", '<script src="stand-in.js"></script>\n<script');
    response.writeHead(200, { "Content-Type": types[extname(file)] ?? "application/octet-stream" }).end(body);
  } catch {
    response.writeHead(404).end();
  }
});
server.listen(Number(port), "127.0.0.1", () => console.log(`http://127.0.0.1:${port}/`));
