'use strict';
// Shows a solid that can be turned. The solid is a GLB as the modeller writes it: meshes of triangles
// with normals and plain base colours, placed by nodes. Nothing here runs before the first one is
// opened; there is one WebGL context at a time, and none while the dialog is closed.

const Viewer = (() => {
  const FIELD = Math.tan(15 * Math.PI / 180);  // half the angle of view
  const VIEWS = {Isometric: [45, 35.264], Front: [0, 0], Side: [90, 0], Top: [0, 89.99]};

  // --- small 4x4 matrices, column by column ---

  function multiply(a, b) {
    const m = new Float32Array(16);
    for (let c = 0; c < 4; c++)
      for (let r = 0; r < 4; r++)
        for (let k = 0; k < 4; k++) m[4 * c + r] += a[4 * k + r] * b[4 * c + k];
    return m;
  }

  function matrixOfNode(node) {
    if (node.matrix) return node.matrix;
    const [x, y, z, w] = node.rotation || [0, 0, 0, 1];
    const [sx, sy, sz] = node.scale || [1, 1, 1];
    const t = node.translation || [0, 0, 0];
    return [(1 - 2 * (y * y + z * z)) * sx, 2 * (x * y + z * w) * sx, 2 * (x * z - y * w) * sx, 0,
            2 * (x * y - z * w) * sy, (1 - 2 * (x * x + z * z)) * sy, 2 * (y * z + x * w) * sy, 0,
            2 * (x * z + y * w) * sz, 2 * (y * z - x * w) * sz, (1 - 2 * (x * x + y * y)) * sz, 0,
            t[0], t[1], t[2], 1];
  }

  const transform = (m, v, w) => [0, 1, 2].map(r => m[r] * v[0] + m[4 + r] * v[1] + m[8 + r] * v[2] + m[12 + r] * w);
  const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
  const cross = (a, b) => [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
  function unit(v) {
    const length = Math.hypot(...v) || 1;
    return v.map(x => x / length);
  }

  // --- GLB ---

  function readGlb(base64) {
    const bytes = Uint8Array.from(atob(base64), c => c.charCodeAt(0));
    const view = new DataView(bytes.buffer);
    if (view.getUint32(0, true) !== 0x46546C67) throw new Error('this is no GLB file');
    const length = view.getUint32(12, true);
    const json = JSON.parse(new TextDecoder().decode(bytes.subarray(20, 20 + length)));
    return {json, view, start: 20 + length + 8};
  }

  const READERS = {5121: ['getUint8', 1], 5123: ['getUint16', 2], 5125: ['getUint32', 4], 5126: ['getFloat32', 4]};

  // An accessor as one list of numbers.
  function read({json, view, start}, index, width) {
    const accessor = json.accessors[index];
    const block = json.bufferViews[accessor.bufferView];
    const [get, size] = READERS[accessor.componentType];
    const stride = block.byteStride || size * width;
    const from = start + (block.byteOffset || 0) + (accessor.byteOffset || 0);
    const list = new Float64Array(accessor.count * width);
    for (let i = 0; i < accessor.count; i++)
      for (let k = 0; k < width; k++) list[width * i + k] = view[get](from + i * stride + k * size, true);
    return list;
  }

  function normalsOf(positions, indices) {
    const sums = new Float64Array(positions.length);
    const point = i => positions.subarray(3 * i, 3 * i + 3);
    for (let i = 0; i + 2 < indices.length; i += 3) {
      const [a, b, c] = [indices[i], indices[i + 1], indices[i + 2]].map(point);
      const n = cross([0, 1, 2].map(k => b[k] - a[k]), [0, 1, 2].map(k => c[k] - a[k]));
      for (let j = 0; j < 3; j++) for (let k = 0; k < 3; k++) sums[3 * indices[i + j] + k] += n[k];
    }
    return sums;
  }

  // Everything that the scene holds, as one set of triangles and one of edges.
  function flatten(glb) {
    const {json} = glb;
    const vertices = [], triangles = [], edges = [];
    const box = {low: [Infinity, Infinity, Infinity], high: [-Infinity, -Infinity, -Infinity]};

    function addPrimitive(primitive, matrix, borders) {
      if ((primitive.mode ?? 4) !== 4) return;
      const local = read(glb, primitive.attributes.POSITION, 3);
      const indices = primitive.indices === undefined
          ? Float64Array.from({length: local.length / 3}, (_, i) => i) : read(glb, primitive.indices, 1);
      const normals = primitive.attributes.NORMAL === undefined
          ? normalsOf(local, indices) : read(glb, primitive.attributes.NORMAL, 3);
      const material = (json.materials || [])[primitive.material] || {};
      const colour = (material.pbrMetallicRoughness || {}).baseColorFactor || [0.5, 0.5, 0.5];
      const first = vertices.length / 9;
      for (let i = 0; i < local.length; i += 3) {
        const p = transform(matrix, local.subarray(i, i + 3), 1);
        const n = unit(transform(matrix, normals.subarray(i, i + 3), 0));
        for (let k = 0; k < 3; k++) {
          box.low[k] = Math.min(box.low[k], p[k]);
          box.high[k] = Math.max(box.high[k], p[k]);
        }
        vertices.push(...p, ...n, colour[0], colour[1], colour[2]);
      }
      for (const i of indices) triangles.push(first + i);
      addBorders(indices, first, borders);
    }

    // A face of the solid is a net of its own: sides that only one of its triangles has are its border.
    function addBorders(indices, first, borders) {
      const sides = new Map();
      for (let i = 0; i + 2 < indices.length; i += 3)
        for (let k = 0; k < 3; k++) {
          const [a, b] = [indices[i + k], indices[i + (k + 1) % 3]];
          const key = Math.min(a, b) * 4294967296 + Math.max(a, b);
          sides.set(key, sides.has(key) ? null : [first + a, first + b]);
        }
      for (const side of sides.values()) if (side) borders.push(side);
    }

    // Where two faces meet smoothly, and along the seam of a round one, nobody sees an edge.
    function addEdges(borders) {
      const place = i => [0, 1, 2].map(k => Math.round(vertices[9 * i + k] * 1e7)).join();
      const normal = i => vertices.slice(9 * i + 3, 9 * i + 6);
      const met = new Map();
      for (const [a, b] of borders) {
        const [pa, pb] = [place(a), place(b)];
        const [key, ends] = pa < pb ? [pa + pb, [a, b]] : [pb + pa, [b, a]];
        if (!met.has(key)) {
          met.set(key, ends);
        } else if (met.get(key)) {
          const other = met.get(key);
          const smooth = ends.every((end, i) => dot(normal(end), normal(other[i])) > 0.98);
          if (smooth) met.set(key, null);
        }
      }
      for (const ends of met.values()) if (ends) edges.push(...ends);
    }

    (function visit(nodes, above) {
      for (const index of nodes || []) {
        const node = json.nodes[index];
        const matrix = multiply(above, matrixOfNode(node));
        const borders = [];
        if (node.mesh !== undefined) for (const each of json.meshes[node.mesh].primitives) addPrimitive(each, matrix, borders);
        addEdges(borders);
        visit(node.children, matrix);
      }
    })(json.scenes[json.scene || 0].nodes, [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]);
    if (!triangles.length) throw new Error('it has no triangles');
    return {vertices: new Float32Array(vertices), triangles: new Uint32Array(triangles), edges: new Uint32Array(edges), box};
  }

  // --- drawing ---

  const VERTEX = `#version 300 es
    in vec3 place, normal, colour;
    uniform mat4 camera, lens;
    uniform highp vec4 line;
    out vec3 eye, turned, paint;
    void main() {
      vec4 seen = camera * vec4(place, 1.0);
      eye = seen.xyz; turned = mat3(camera) * normal; paint = colour;
      gl_Position = lens * seen;
      if (line.a > 0.0) gl_Position.z -= 6e-4 * gl_Position.w;  // edges before their faces
    }`;
  const FRAGMENT = `#version 300 es
    precision highp float;
    in vec3 eye, turned, paint;
    uniform highp vec4 line;
    out vec4 result;
    void main() {
      if (line.a > 0.0) { result = line; return; }
      vec3 n = normalize(turned), v = normalize(-eye);
      if (dot(n, v) < 0.0) n = -n;
      vec3 key = normalize(vec3(-0.35, 0.6, 0.9));
      float light = 0.3 + 0.2 * (0.5 + 0.5 * n.y) + 0.5 * max(dot(n, key), 0.0) + 0.3 * max(dot(n, normalize(vec3(0.9, 0.1, 0.5))), 0.0);
      float shine = 0.18 * pow(max(dot(n, normalize(key + v)), 0.0), 40.0);
      result = vec4(pow(paint * light + shine, vec3(1.0 / 2.2)), 1.0);
    }`;

  function makeProgram(gl) {
    const program = gl.createProgram();
    for (const [kind, source] of [[gl.VERTEX_SHADER, VERTEX], [gl.FRAGMENT_SHADER, FRAGMENT]]) {
      const shader = gl.createShader(kind);
      gl.shaderSource(shader, source);
      gl.compileShader(shader);
      gl.attachShader(program, shader);
    }
    gl.linkProgram(program);
    if (!gl.getProgramParameter(program, gl.LINK_STATUS)) throw new Error(gl.getProgramInfoLog(program) || 'its shaders fail');
    return program;
  }

  function fill(gl, kind, data) {
    gl.bindBuffer(kind, gl.createBuffer());
    gl.bufferData(kind, data, gl.STATIC_DRAW);
  }

  class Scene {
    constructor(canvas, solid, onFirstFrame) {
      this.canvas = canvas;
      this.solid = solid;
      this.onFirstFrame = onFirstFrame;
      const gl = this.gl = canvas.getContext('webgl2', {antialias: true, alpha: true, premultipliedAlpha: true});
      if (!gl) throw new Error('this browser draws no WebGL here');
      const program = makeProgram(gl);
      gl.useProgram(program);
      this.places = Object.fromEntries(['camera', 'lens', 'line'].map(name => [name, gl.getUniformLocation(program, name)]));
      fill(gl, gl.ARRAY_BUFFER, solid.vertices);
      ['place', 'normal', 'colour'].forEach((name, i) => {
        const at = gl.getAttribLocation(program, name);
        gl.enableVertexAttribArray(at);
        gl.vertexAttribPointer(at, 3, gl.FLOAT, false, 36, 12 * i);
      });
      const indices = new Uint32Array(solid.triangles.length + solid.edges.length);
      indices.set(solid.triangles);
      indices.set(solid.edges, solid.triangles.length);
      fill(gl, gl.ELEMENT_ARRAY_BUFFER, indices);
      gl.enable(gl.DEPTH_TEST);
      gl.enable(gl.POLYGON_OFFSET_FILL);
      gl.polygonOffset(1, 2);
      this.show('Isometric');
    }

    show(view) {
      [this.yaw, this.pitch] = VIEWS[view].map(angle => angle * Math.PI / 180);
      this.distance = undefined;
      this.zoom = 1;
      this.shift = [0, 0];
      this.draw();
    }
    turn(dx, dy) {
      this.yaw -= dx;
      this.pitch = Math.min(1.5706, Math.max(-1.5706, this.pitch + dy));
      this.draw();
    }
    scale(factor) {
      this.zoom = Math.min(50, Math.max(0.2, this.zoom * factor));
      this.draw();
    }
    move(dx, dy) {
      this.shift[0] += dx / this.zoom;
      this.shift[1] += dy / this.zoom;
      this.draw();
    }
    draw() {
      this.frame ??= requestAnimationFrame(() => {
        this.frame = undefined;
        this.drawNow();
      });
    }

    drawNow() {
      const {gl, canvas, solid} = this;
      const scale = Math.min(2, devicePixelRatio || 1);
      canvas.width = Math.max(1, Math.round(canvas.clientWidth * scale));
      canvas.height = Math.max(1, Math.round(canvas.clientHeight * scale));
      gl.viewport(0, 0, canvas.width, canvas.height);
      gl.clearColor(0, 0, 0, 0);
      gl.clear(gl.COLOR_BUFFER_BIT | gl.DEPTH_BUFFER_BIT);
      const {camera, lens} = this.cameraAndLens(canvas.width / canvas.height);
      gl.uniformMatrix4fv(this.places.camera, false, camera);
      gl.uniformMatrix4fv(this.places.lens, false, lens);
      gl.uniform4f(this.places.line, 0, 0, 0, 0);
      gl.drawElements(gl.TRIANGLES, solid.triangles.length, gl.UNSIGNED_INT, 0);
      gl.uniform4f(this.places.line, 0.05, 0.07, 0.1, 1);
      gl.drawElements(gl.LINES, solid.edges.length, gl.UNSIGNED_INT, 4 * solid.triangles.length);
      if (this.onFirstFrame) this.onFirstFrame(this.countPixels());
      this.onFirstFrame = null;
    }

    // The camera turns about the middle of the box. It stands where all is just seen when a view begins,
    // and keeps that distance while the solid is turned.
    cameraAndLens(aspect) {
      const {low, high} = this.solid.box;
      const back = [Math.cos(this.pitch) * Math.sin(this.yaw), Math.sin(this.pitch), Math.cos(this.pitch) * Math.cos(this.yaw)];
      const right = [Math.cos(this.yaw), 0, -Math.sin(this.yaw)];
      const up = cross(back, right);
      const centre = [0, 1, 2].map(k => (low[k] + high[k]) / 2);
      const tall = FIELD * Math.max(1, 1 / aspect), wide = tall * aspect;
      const reach = Math.hypot(...high.map((top, k) => top - low[k])) / 2;
      if (this.distance === undefined || this.aspect !== aspect) {
        const {vertices} = this.solid;
        this.distance = 0;
        for (let i = 0; i < vertices.length; i += 9) {
          const v = [vertices[i] - centre[0], vertices[i + 1] - centre[1], vertices[i + 2] - centre[2]];
          const near = dot(v, back);
          this.distance = Math.max(this.distance, Math.abs(dot(v, right)) / wide + near, Math.abs(dot(v, up)) / tall + near);
        }
        this.distance *= 1.08;
        this.aspect = aspect;
      }
      const {distance} = this;
      const seen = distance / this.zoom;
      const camera = new Float32Array(16);
      [right, up, back].forEach((axis, row) => {
        for (let k = 0; k < 3; k++) camera[4 * k + row] = axis[k];
        camera[12 + row] = -dot(axis, centre);
      });
      camera[12] += this.shift[0] * 2 * wide * distance;
      camera[13] += this.shift[1] * 2 * tall * distance;
      camera[14] -= seen;
      camera[15] = 1;
      const near = Math.max(seen - 3 * reach, seen / 100), far = seen + 3 * reach;
      const lens = new Float32Array([1 / wide, 0, 0, 0, 0, 1 / tall, 0, 0, 0, 0, (near + far) / (near - far), -1, 0, 0, 2 * near * far / (near - far), 0]);
      return {camera, lens};
    }

    countPixels() {
      const {gl, canvas} = this;
      const pixels = new Uint8Array(4 * canvas.width * canvas.height);
      gl.readPixels(0, 0, canvas.width, canvas.height, gl.RGBA, gl.UNSIGNED_BYTE, pixels);
      let drawn = 0;
      for (let i = 3; i < pixels.length; i += 4) drawn += pixels[i] ? 1 : 0;
      return drawn;
    }

    close() {
      if (this.frame !== undefined) cancelAnimationFrame(this.frame);
      this.gl.getExtension('WEBGL_lose_context')?.loseContext();
    }
  }

  // --- mouse, fingers, keys ---

  function listen(scene) {
    const {canvas} = scene;
    const fingers = new Map();
    const size = () => Math.min(canvas.clientWidth, canvas.clientHeight) || 1;
    canvas.addEventListener('pointerdown', event => {
      canvas.setPointerCapture(event.pointerId);
      fingers.set(event.pointerId, event);
    });
    canvas.addEventListener('pointermove', event => {
      const before = fingers.get(event.pointerId);
      if (!before) return;
      const [dx, dy] = [event.clientX - before.clientX, event.clientY - before.clientY];
      const other = [...fingers.values()].find(each => each.pointerId !== event.pointerId);
      if (other) {
        const apart = each => Math.hypot(each.clientX - other.clientX, each.clientY - other.clientY) || 1;
        scene.scale(apart(event) / apart(before));
      }
      if (other || event.shiftKey || event.buttons & 6) {
        const share = other ? 0.5 : 1;
        scene.move(share * dx / canvas.clientWidth, -share * dy / canvas.clientHeight);
      } else {
        scene.turn(dx / size() * Math.PI, dy / size() * Math.PI);
      }
      fingers.set(event.pointerId, event);
    });
    for (const end of ['pointerup', 'pointercancel']) canvas.addEventListener(end, event => fingers.delete(event.pointerId));
    canvas.addEventListener('contextmenu', event => event.preventDefault());
    canvas.addEventListener('dblclick', () => scene.show('Isometric'));
    canvas.addEventListener('wheel', event => {
      event.preventDefault();
      scene.scale(Math.exp(-event.deltaY * (event.deltaMode ? 0.05 : 0.0015)));
    }, {passive: false});
    const step = 0.12;
    const keys = {
      ArrowLeft: () => scene.turn(-step, 0), ArrowRight: () => scene.turn(step, 0),
      ArrowUp: () => scene.turn(0, -step), ArrowDown: () => scene.turn(0, step),
      '+': () => scene.scale(1.2), '=': () => scene.scale(1.2), '-': () => scene.scale(1 / 1.2),
      '0': () => scene.show('Isometric'),
    };
    canvas.addEventListener('keydown', event => {
      if (!keys[event.key] || event.ctrlKey || event.metaKey) return;
      event.preventDefault();
      keys[event.key]();
    });
  }

  // --- the dialog ---

  const element = id => document.getElementById(id);
  let scene = null, observer = null;

  function close() {
    observer?.disconnect();
    scene?.close();
    scene = observer = null;
    element('viewer-stage').replaceChildren();
  }

  function open(title, base64) {
    close();
    const dialog = element('viewer'), message = element('viewer-message');
    element('viewer-title').textContent = title;
    message.textContent = '';
    delete dialog.dataset.pixels;
    if (!dialog.open) dialog.showModal();
    const canvas = document.createElement('canvas');
    canvas.tabIndex = 0;
    canvas.setAttribute('role', 'img');
    canvas.setAttribute('aria-label', `${title}, a solid that can be turned with the arrow keys`);
    element('viewer-stage').append(canvas);
    try {
      const solid = flatten(readGlb(base64));
      scene = new Scene(canvas, solid, pixels => {
        dialog.dataset.pixels = pixels;
        dialog.dataset.triangles = solid.triangles.length / 3;
        dialog.dataset.edges = solid.edges.length / 2;
      });
    } catch (error) {
      message.textContent = `The solid cannot be shown: ${error.message}.`;
      return;
    }
    listen(scene);
    canvas.addEventListener('webglcontextlost', event => {
      event.preventDefault();
      message.textContent = 'The browser took the picture away; close and open it again.';
    });
    observer = new ResizeObserver(() => scene?.draw());
    observer.observe(canvas);
    canvas.focus();
  }

  function prepare() {
    element('viewer-close').addEventListener('click', () => element('viewer').close());
    element('viewer').addEventListener('close', close);
    for (const name of Object.keys(VIEWS)) {
      const button = document.createElement('button');
      button.type = 'button';
      button.textContent = name;
      button.addEventListener('click', () => scene?.show(name));
      element('viewer-views').append(button);
    }
  }

  return {open, prepare};
})();
