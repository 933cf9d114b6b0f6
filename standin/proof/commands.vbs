' A client of the add-in that is not ours: run by the script host of the system.
Option Explicit
Dim commands
Set commands = CreateObject("VelnorOutlookCOMAddIn.clsVelnorCmds")
WScript.Echo TypeName(commands)
commands.Dial
commands.Drop Nothing, "1"
commands.Action Nothing, 1, Nothing
commands.Dial Empty, Null
On Error Resume Next
commands.Hup
WScript.Echo Err.Number
