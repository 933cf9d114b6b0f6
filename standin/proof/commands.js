// A client of the add-in that is not ours: run by the script host of the system.
function attempt(what, action) {
  try {
    action();
    WScript.Echo(what + ": done");
  } catch (error) {
    WScript.Echo(what + ": error " + (error.number & 0xFFFF));
  }
}

var commands = new ActiveXObject("VelnorOutlookCOMAddIn.clsVelnorCmds");
attempt("Dial", function () { commands.Dial(); });
attempt("drop", function () { commands.drop(null, "1"); });
attempt("Dial with arguments", function () { commands.Dial(null, "1", null); });
attempt("Action", function () { commands.Action(); });
attempt("Hup", function () { commands.Hup(); });
attempt("Dial with a text for a button", function () { commands.Dial("button"); });
