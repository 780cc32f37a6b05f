' What the scripts share: it stands before each of them. The first argument of a script is the
' folder that it may write in, the second the path of an empty store.
Const AttributeMark = "þ"
Const ValueMark = "ý"

Const RecordNotFound = &H8004000B
Const UnknownFile = &H80040001
Const BadSentence = &H80040002
Const Busy = &H80040003
Const BadValue = &H80040004
Const IoFailure = &H80040005
Const Changed = &H80040006
Const Unspecified = &H80004005
Const InvalidArgument = &H80070057

Dim passed, failed
passed = 0
failed = 0

Sub Hold(what, holds)
  If holds Then
    passed = passed + 1
  Else
    failed = failed + 1
    WScript.Echo "FAILED " & what
  End If
End Sub

Sub Equal(what, wanted, got)
  Hold what & ": wanted <" & wanted & ">, got <" & got & ">", wanted = got
End Sub

' After a statement under On Error Resume Next: it has failed with this code, and told why.
Sub Refused(what, code)
  Hold what & ": code " & Hex(Err.Number), Err.Number = code
  Hold what & ": a description", Len(Err.Description) > 0
  Err.Clear
End Sub

Function Store()
  Set Store = CreateObject("TessalineStore.Client").OpenDatabase(WScript.Arguments(1))
End Function

Sub Finish()
  WScript.Echo passed & " passed, " & failed & " failed"
End Sub
