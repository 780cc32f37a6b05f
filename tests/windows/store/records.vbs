' The client, the open store, its files and their records.
Dim client, database, file, record
Set client = CreateObject("TessalineStore.Client")
Set database = client.OpenDatabase(WScript.Arguments(1))
Set file = database.OpenFile("ORGPRISECHARGE")

Set record = file.ReadRecord("001")
Equal "no such record: empty", "", record.Value
Equal "no such record: status", RecordNotFound, record.Status
record.Value(1) = "CD01"
record.Value(2) = "Conseil départemental de l'Ain"
record.Value(21, 2) = "pièce"
record.DBWrite
Equal "status after the record was written", 0, record.Status

Set record = file.ReadRecord("001")
Equal "status of a record that is there", 0, record.Status
Equal "accents come back", "Conseil départemental de l'Ain", record.Value(2)
Equal "values come back", "pièce", record.Value(21, 2)
Equal "an empty value comes back", "", record.Value(21, 1)
Equal "attributes in between are empty", "", record.Value(15)

' The record's file and store are gone before it.
Set record = Store().OpenFile("ORGPRISECHARGE").ReadRecord("002")
record.Value(1) = "CD02"
record.DBWrite
Equal "a record outlives its file", "CD02", file.ReadRecord("002").Value(1)

' Two handles on one record: the last one written counts, each keeps what it has.
Dim other
Set record = file.ReadRecord("002")
Set other = file.ReadRecord("002")
record.Value(1) = "CD02 bis"
record.DBWrite
Equal "another handle keeps what it read", "CD02", other.Value(1)
other.DBWrite
Equal "the last one written counts", "CD02", file.ReadRecord("002").Value(1)

' Identifiers with accents and blanks; a number is its text.
Set record = file.ReadRecord("clé à 1 €")
record.Value = "x"
record.DBWrite
Equal "an identifier with accents", "x", file.ReadRecord("clé à 1 €").Value
Set record = file.ReadRecord(12)
record.Value = "douze"
record.DBWrite
Equal "a number as identifier", "douze", file.ReadRecord("12").Value

' What is announced is read as ever.
file.AnnounceRecords "002þnoneþ12"
file.AnnounceAll
Equal "one that was announced", "CD02", file.ReadRecord("002").Value(1)
Equal "one that is not there", RecordNotFound, file.ReadRecord("none").Status
Equal "another one", "douze", file.ReadRecord("12").Value

Equal "a record is deleted", 0, file.DeleteRecord("12")
Equal "it is gone", RecordNotFound, file.ReadRecord("12").Status
Equal "deleting what is not there", RecordNotFound, file.DeleteRecord("12")
file.DeleteRecord "clé à 1 €"

' Requests.
Dim request, answer
Set request = database.NewDynamicArray()
request.Value(1) = "SSELECT ORGPRISECHARGE PAR 1"
request.Value(2) = "ORGPRISECHARGE"
request.Value(3) = "0 1"
Set answer = database.ExecuteSentence(request.Value)
Equal "one attribute a record", 2, answer.DCount()
Equal "the columns asked for", "001" & ValueMark & "CD01", answer.Value(1)
Equal "in the sentence's order", "002", answer.Value(2, 1)
Set answer = database.ExecuteSentence(request)
Equal "the request given as an object", 2, answer.DCount()
request.Value(1) = "SSELECT ORGPRISECHARGE AVEC SigleOrgChg = ""CD02]"""
Equal "a prefix", "002" & ValueMark & "CD02", database.ExecuteSentence(request.Value).Value(1)
request.Value(1) = "SSELECT ORGPRISECHARGE AVEC RaisonOrgChg = ""Conseil départemental]"""
Equal "a prefix with accents", "001", database.ExecuteSentence(request.Value).Value(1, 1)
request.Value(1) = "SSELECT ORGPRISECHARGE AVEC 1 = ""nobody"""
Equal "nothing selected", "", database.ExecuteSentence(request.Value).Value(1)
Equal "nothing selected: no attribute", 0, database.ExecuteSentence(request.Value).DCount()
Equal "commands are accepted", "", database.ExecuteSentence("SET-DEC ," & AttributeMark & "DATE.FORMAT").Value

' A long record, and many.
Dim i, long1
Set long1 = database.NewDynamicArray()
For i = 1 To 2000
  long1.Value(i) = "attribut " & i
Next
Set record = file.ReadRecord("long")
record.Value = long1.Value
record.DBWrite
Equal "a long record", long1.Value, file.ReadRecord("long").Value
file.DeleteRecord "long"

' Two that work on one record.
Dim elsewhere, theirs
Set elsewhere = client.OpenDatabase(WScript.Arguments(1)).OpenFile("ORGPRISECHARGE")
Set record = file.ReadRecord("two")
Set theirs = elsewhere.ReadRecord("two")
theirs.Value(1) = "theirs"
theirs.DBWrite
theirs.DBWrite
record.Value(1) = "mine"
On Error Resume Next
record.DBWrite
Refused "a record that somebody else has created", Changed
On Error GoTo 0
Equal "what they have written stays", "theirs", file.ReadRecord("two").Value(1)
Set record = file.ReadRecord("two")
elsewhere.DeleteRecord "two"
On Error Resume Next
record.DBWrite
Refused "a record that somebody else has deleted", Changed
On Error GoTo 0
Equal "it does not come back", RecordNotFound, file.ReadRecord("two").Status

' A store that is only read.
Dim reading
Set reading = client.OpenDatabase(WScript.Arguments(1), True).OpenFile("ORGPRISECHARGE")
Equal "read by a store that is only read", "CD01", reading.ReadRecord("001").Value(1)
Set record = reading.ReadRecord("001")
On Error Resume Next
record.DBWrite
Refused "a write to it", IoFailure
client.OpenDatabase "\\server\share\a.store"
Refused "a store on a share", IoFailure
On Error GoTo 0
Equal "opened for writing when it is said so", "CD01", client.OpenDatabase(WScript.Arguments(1), False).OpenFile("ORGPRISECHARGE").ReadRecord("001").Value(1)

On Error Resume Next
client.OpenDatabase WScript.Arguments(0) & "\no such store"
Refused "no such store", IoFailure
Dim files
Set files = CreateObject("Scripting.FileSystemObject")
files.CreateTextFile(WScript.Arguments(0) & "\not a store.txt").Write String(5000, "x")
client.OpenDatabase WScript.Arguments(0) & "\not a store.txt"
Refused "a file that is no store", IoFailure
database.OpenFile "NOSUCHFILE"
Refused "an unknown file", UnknownFile
database.ExecuteSentence "SSELECT NOSUCHFILE"
Refused "a selection in an unknown file", UnknownFile
database.ExecuteSentence "SSELECT ORGPRISECHARGE AVEC"
Refused "a malformed sentence", BadSentence
database.ExecuteSentence ""
Refused "an empty request", BadSentence
Err.Clear
database.ExecuteSentence "SSELECT ORGPRISECHARGE AVEC NoSuchField = ""x"""
Hold "the message names what is wrong", InStr(Err.Description, "NoSuchField") > 0
Equal "the source of an error", "TessalineStore", Err.Source
Err.Clear
Set record = file.ReadRecord("")
record.DBWrite
Refused "an empty identifier", BadValue
Set record = file.ReadRecord("a" & AttributeMark & "b")
record.DBWrite
Refused "an identifier with a mark", BadValue
file.ReadRecord
Hold "a missing argument", Err.Number <> 0
Err.Clear
On Error GoTo 0
Equal "the store goes on after refusals", "CD01", file.ReadRecord("001").Value(1)

Finish
