' Dynamic arrays: every member, positions, marks, accents.
Dim array1
Set array1 = Store().NewDynamicArray()
Equal "a new array is empty", "", array1.Value
Equal "a new array has no attribute", 0, array1.DCount()
Equal "DCount without parentheses", 0, array1.DCount
Equal "a new array's status", 0, array1.Status

array1.Value(3) = "trois"
Equal "assigning past the end extends", AttributeMark & AttributeMark & "trois", array1.Value
Equal "attributes are counted", 3, array1.DCount()
array1.Value(1, 2) = "deux"
Equal "values past the end extend", ValueMark & "deux", array1.Value(1)
Equal "values are counted", 2, array1.DCount(1)
Equal "an empty attribute has no value", 0, array1.DCount(2)
Equal "a value is read", "deux", array1.Value(1, 2)
Equal "reading past the last value", "", array1.Value(1, 9)
Equal "reading past the last attribute", "", array1.Value(99)

array1.Insert(1, 1) = "un"
Equal "Insert before an empty value", "un" & ValueMark & ValueMark & "deux", array1.Value(1)
array1.Insert(1, 2) = "un et demi"
Equal "Insert moves the following up", "un et demi", array1.Value(1, 2)
Equal "Insert counts", 4, array1.DCount(1)
array1.Delete 1, 3
Equal "Delete moves the following down", "deux", array1.Value(1, 3)
array1.Delete 1, 9
Equal "Delete past the end does nothing", 3, array1.DCount(1)

' The default member.
Equal "the array itself is its text", array1.Value, "" & array1
Equal "the array with a position", "trois", array1(3)
Equal "the array with two positions", "deux", array1(1, 3)
array1(3, 1) = "assigned"
Equal "assigned through the default member", "assigned", array1.Value(3, 1)

' The full text, with marks and accents.
Dim text
text = "Conseil départemental de la Réunion" & ValueMark & "œuvre d'été" & AttributeMark & "ÿ €"
array1.Value = text
Equal "the text comes back", text, array1.Value
Equal "marks separate attributes", 2, array1.DCount()
Equal "marks separate values", "œuvre d'été", array1.Value(1, 2)
Equal "accents are characters", 35, Len(array1.Value(1, 1))
array1.Value(2) = "a" & ValueMark & "b"
Equal "an attribute may be given several values", "b", array1.Value(2, 2)
array1.Value = ""
Equal "an array is emptied", 0, array1.DCount()

' What is assigned or given as a position is converted.
array1.Value("2", "1") = 12
Equal "numbers become text", "12", array1.Value(2)
Dim position
position = 2
array1.Value(position, position) = position
Equal "positions from variables", "12" & ValueMark & "2", array1.Value(2)

On Error Resume Next
text = array1.Value(0)
Refused "position 0", InvalidArgument
text = array1.Value(1, -1)
Refused "a negative value position", InvalidArgument
array1.Value(0) = "x"
Refused "assigning position 0", InvalidArgument
array1.Delete 1, 0
Refused "deleting value 0", InvalidArgument
array1.Insert(0, 1) = "x"
Refused "inserting into attribute 0", InvalidArgument
array1.Value(1, 1) = "a" & ValueMark & "b"
Refused "a value with a value mark", BadValue
array1.Value(1) = "a" & AttributeMark & "b"
Refused "an attribute with an attribute mark", BadValue
array1.Insert(1, 1) = AttributeMark
Refused "inserting a mark", BadValue
text = array1.Value("deux")
Hold "a position that is no number", Err.Number <> 0
Err.Clear
array1.DBWrite
Refused "writing an array of no file", Unspecified
array1.Status = 1
Hold "the status cannot be assigned", Err.Number <> 0
Err.Clear
array1.Nothing_Of_This_Name
Equal "an unknown member", 438, Err.Number
Err.Clear
text = array1.Value(1, 1, 1)
Hold "too many arguments", Err.Number <> 0
Err.Clear
array1.Delete 1
Hold "too few arguments", Err.Number <> 0
Err.Clear
On Error GoTo 0
Equal "a refused call changes nothing", AttributeMark & "12" & ValueMark & "2", array1.Value

Finish
