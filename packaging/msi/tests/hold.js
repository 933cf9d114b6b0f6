// Creates an object of the installed DLL and holds it while the file stands that is named.
var held = new ActiveXObject("VelnorOutlookCOMAddIn.clsVelnorCmds");
var files = new ActiveXObject("Scripting.FileSystemObject");
var shell = new ActiveXObject("WScript.Shell");
WScript.Echo("held");
// Wine's script host can't sleep; a program's life is a pause.
while (files.FileExists(WScript.Arguments.Item(0))) shell.Run("cmd.exe /c exit", 0, true);
WScript.Echo("let go");
