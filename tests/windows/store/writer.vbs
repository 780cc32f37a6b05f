' Writes 100 records of its own while others do the same: argument 3 is its name.
Dim file, record, i
On Error Resume Next
Set file = Store().OpenFile("TEMPO")
For i = 1 To 100
  Set record = file.ReadRecord(WScript.Arguments(2) & i)
  record.Value(1) = WScript.Arguments(2)
  record.Value(2) = i
  record.DBWrite
  Equal "what was written is there", CStr(i), file.ReadRecord(WScript.Arguments(2) & i).Value(2)
  Hold "no failure: " & Hex(Err.Number) & " " & Err.Description, Err.Number = 0
  Err.Clear
Next

Finish
