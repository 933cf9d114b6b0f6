// A telephony client as the add-in wants it, all of it: docs/interfaces.md says what each member is
// asked for, and when. The calls are played; where the real client talks to its exchange, this one
// changes the state of a line.

var Dialling = 1, Signalling = 2, Connected = 3, Idle = 4;
var Words = { 1: ", dialling: ", 2: ", ringing: ", 3: ", connected: ", 4: "" };

var lines = [{ id: 1, state: Idle, number: "" }, { id: 2, state: Idle, number: "" }];
var current = lines[0];

// The line of an id; 0 is the current one.
function lineOf(id) {
  for (var i in lines) if (lines[i].id == id) return lines[i];
  return id == 0 ? current : null;
}

// The first line in a state, null without one.
function lineIn(state) {
  for (var i in lines) if (lines[i].state == state) return lines[i];
  return null;
}

function change(line, state, number) {
  line.state = state;
  line.number = number;
  current = line;
}

function end(line) {
  if (!line || line.state == Idle) return false;
  line.state = Idle;
  line.number = "";
  for (var i in lines) if (current.state == Idle && lines[i].state != Idle) current = lines[i];
  return true;
}

// A script has no arrays of the kind that others can read; a dictionary hands some out.
var ids = new ActiveXObject("Scripting.Dictionary");
for (var i in lines) ids.Add(i, lines[i].id);

var phoneCommand = {
  Dial: function (firstLine, chosenLine, number, option) {
    change(lineOf(chosenLine || -1) || lineIn(Idle) || current, Dialling, number);
    host.tell("dial " + number + (chosenLine ? " on line " + chosenLine : " on a free line") +
              (firstLine ? " (first line " + firstLine + ")" : ""));
  },
  HangUp: function (line) { end(lineOf(line)); host.tell("hang up"); },
  PickUp: function (line) {
    var signalling = lineIn(Signalling);
    if (signalling) change(signalling, Connected, signalling.number);
    host.tell("pick up");
  },
  LineStateOf: function (line) { return lineOf(line) ? lineOf(line).state : 0; },
  LineState: function (line) { return current.state; },
  Lines: function (kind) { return ids.Items(); },
  Stop: function (code) { host.tell("stop (" + code + ")"); if (code == 13) host.quit(); },
  Transfer: function (line) { host.tell("transfer"); },
  Incognito: function (line) { host.tell("incognito"); }
};

var auxiliaryService = {
  ShowNumber: function (number, lastName, firstName, company, reference, remark, how) {
    host.hidden = false;
    host.tell("show number \"" + number + "\"");
  },
  // Without a label that ends in ": ", and without what is only for the eye.
  ConvertNumber: function (number) { return number.replace(/^.*: |\(0\)|[ \/\-]/g, ""); },
  ShowActions: function (references, a, b) {
    host.hidden = false;
    host.tell("open actions \"" + references.replace(/\n/g, "\\n") + "\" (" + a + ", " + b + ")");
  },
  ShowCallInfo: function () { host.hidden = false; host.tell("show call info"); },
  IsNumber: function (text) { return /^[0-9*#Ii\/\-+ ().]*$/.test(text); }
};

// Members that give an object are functions here: either way of asking for them is answered.
var application = {
  PhoneCommand: function () { return phoneCommand; },
  AuxiliaryService: function () { return auxiliaryService; }
};

var remote = {
  DirectDial: function (number, ask) {
    change(lineIn(Idle) || current, Dialling, number);
    host.tell("dial remotely " + number);
  }
};

// The order counts: who finds the window asks for the running object next.
host.makeWindow("SfFrameOrView", "Velnor, a script");
host.offerClass("velnor.application", application);
host.offerClass("velnor.remote", remote);
host.offerRunning("velnor.application", application);

// What the other side of the line does, as whoever tries the client asks for it.
function request(text) {
  if (text == "ready" || text == "reload") return true;
  if (text == "show") { host.hidden = false; return true; }
  if (text == "quit") { host.quit(); return true; }
  if (text.substr(0, 4) == "ring") {
    var line = lineIn(Idle);
    if (line) change(line, Signalling, text.substr(5));
    return line != null;
  }
  if (text == "connect" && (current.state == Dialling || current.state == Signalling)) {
    current.state = Connected;
    return true;
  }
  return text == "end call" && end(current);
}

function status() {
  return "running" + (host.hidden ? " hidden" : "") + Words[current.state] + current.number;
}
