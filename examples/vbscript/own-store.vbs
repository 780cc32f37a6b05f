' The control on a store that the script itself is: cscript //nologo own-store.vbs
' These five classes have all members that the control calls. Records stand in a dictionary, by file and
' key: a text in which one mark separates attributes and another one their values.
Option Explicit
Dim AttributeMark, records, written
AttributeMark = Chr(254)
Set records = CreateObject("Scripting.Dictionary")
written = 0

Class StoreRecord
  Private place
  Private content
  Public Status ' 0, or this code for a record that does not exist

  Public Sub Read(file, id)
    place = file & "/" & id
    Status = 0
    If records.Exists(place) Then content = records(place) Else Status = &H8004000B
  End Sub

  Public Default Property Get Text
    Text = content
  End Property
  Public Property Let Text(full)
    content = full
  End Property

  Public Sub DBWrite
    records(place) = content
    Status = 0
    written = written + 1
  End Sub
End Class

Class StoreFile
  Public Name

  Public Function ReadRecord(id)
    Set ReadRecord = New StoreRecord
    ReadRecord.Read Name, id
  End Function

  Public Sub DeleteRecord(id)
    If records.Exists(Name & "/" & id) Then records.Remove Name & "/" & id
  End Sub
End Class

Class Store
  Public Function OpenFile(file)
    Set OpenFile = New StoreFile
    OpenFile.Name = file
  End Function

  ' A request is a sentence, the file that it selects from, and the columns that are wanted. This store
  ' knows one kind of condition, that an attribute has a value, and gives all in the order of the keys.
  Public Function ExecuteSentence(request)
    Dim part, place, line, answer, column
    answer = ""
    part = Split(request, AttributeMark)
    For Each place In records.Keys
      If Left(place, Len(part(1)) + 1) = part(1) & "/" Then
        If Fits(part(0), records(place)) Then
          line = ""
          For Each column In Split(part(2))
            If column = "0" Then line = line & ValueMark & Mid(place, Len(part(1)) + 2) _
              Else line = line & ValueMark & Attribute(records(place), column)
          Next
          answer = answer & AttributeMark & Mid(line, 2)
        End If
      End If
    Next
    ExecuteSentence = Mid(answer, 2)
  End Function

  Private Function ValueMark
    ValueMark = Chr(253)
  End Function

  Private Function Fits(sentence, text)
    Dim condition, field, words
    Fits = True
    For Each condition In Split(sentence, " AVEC ")
      words = Split(condition, """")
      If UBound(words) > 0 Then
        field = Split(condition, " ")
        If Attribute(text, NumberOf(field(0))) <> words(1) Then Fits = False
      End If
    Next
  End Function

  Private Function NumberOf(field)
    NumberOf = field
    If field = "CodAssoActivite" Then NumberOf = 2
    If field = "OrgChgAcc" Then NumberOf = 1
  End Function
End Class

Class Right
  Public Level
End Class

Class Rights
  Public Default Property Get Entry(name)
    Set Entry = New Right
    Entry.Level = 2
  End Property
End Class

Function Attribute(text, number)
  Dim all
  all = Split(text, AttributeMark)
  If CInt(number) - 1 <= UBound(all) Then Attribute = all(CInt(number) - 1) Else Attribute = ""
End Function

' A record from pairs of an attribute and its text.
Sub Fill(place, pairs)
  Dim text, number, i
  number = 1
  For i = 0 To UBound(pairs) Step 2
    For number = number To pairs(i) - 1
      text = text & AttributeMark
    Next
    text = text & pairs(i + 1)
  Next
  records(place) = text
End Sub

Fill "ASSOCIATION/010", Array(1, "AIDE DU VAL")
Fill "ACTIVITES/010P01", Array(1, "Aide menagere", 2, "010", 12, "P", 13, "SAAD")
Fill "PARAMBORDORGCHG/1", Array(1, "Nom", 2, "30")
Fill "ORGPRISECHARGE/001", Array(1, "CD01", 2, "Conseil departemental", 17, "M", 18, "P", 19, "3", _
  20, "0", 24, "H", 25, "21186", 26, "2000", 27, "2500", 28, "1500", 41, "M", 42, "0", 44, "0", 45, "I", _
  46, "010", 47, "010P01", 48, "1", 50, "0", 51, "0", 53, "0", 55, "0", 57, "0", 61, "1")

Dim control
Set control = CreateObject("Tessaline.Ctr_OrgPriseCharge")
Set control.TheDatabase = New Store
Set control.DroitsUtilisateur = New Rights
control.Init
Dim accepted
accepted = control.Verif_Ong1 And control.Verif_Ong2 And control.Verif_Ong3 And _
  control.Verif_Ong4 And control.Verif_Ong5 And control.Verif_Ong6
If accepted Then WScript.Echo "all pages accept it"
control.Ecrire_Donnees
WScript.Echo "written: " & written
WScript.Echo "name: " & Attribute(records("ORGPRISECHARGE/001"), 2)
Set control = Nothing
