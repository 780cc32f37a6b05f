' The rights object.
Dim rights, entry, level
Set rights = CreateObject("TessalineStore.Rights")
Set entry = rights("CONSULTATIONORGCHARGE")
Equal "a right without a level", 0, entry.Level
rights.SetLevel "CONSULTATIONORGCHARGE", 2
Equal "an entry reads the current level", 2, entry.Level
Equal "through the default member", 2, rights("CONSULTATIONORGCHARGE").Level
Equal "by the default member's name", 2, rights.Entry("CONSULTATIONORGCHARGE").Level
rights.SetLevel "CONSULTATIONORGCHARGE", "1"
Equal "a level given as text", 1, entry.Level
Equal "another right has its own", 0, rights("consultationorgcharge").Level
rights.SetLevel "Éditer", 3
Equal "a name with an accent", 3, rights("Éditer").Level
Set rights = Nothing
Equal "an entry outlives its rights", 1, entry.Level
Equal "the entry itself is its level", 1, entry + 0

Set rights = CreateObject("TessalineStore.Rights.1")
Equal "two rights objects are apart", 0, rights("CONSULTATIONORGCHARGE").Level

On Error Resume Next
rights.SetLevel "CONSULTATIONORGCHARGE", "much"
Hold "a level that is no number", Err.Number <> 0
Err.Clear
For Each level In Array(1.5, "1,5", "1.0", "", True, #01/01/2026#, Empty, Null)
  rights.SetLevel "CONSULTATIONORGCHARGE", level
  Hold "a level that is no whole number: " & TypeName(level), Err.Number <> 0
  Err.Clear
Next
Equal "the level is as it was", 0, rights("CONSULTATIONORGCHARGE").Level
rights.SetLevel "CONSULTATIONORGCHARGE", 2.0
Hold "a whole number with a fraction's type", Err.Number = 0
Equal "its level", 2, rights("CONSULTATIONORGCHARGE").Level
Err.Clear
rights.SetLevel "CONSULTATIONORGCHARGE"
Hold "a missing level", Err.Number <> 0
Err.Clear
entry.Level = 2
Hold "an entry's level cannot be assigned", Err.Number <> 0
Err.Clear
On Error GoTo 0

Finish
