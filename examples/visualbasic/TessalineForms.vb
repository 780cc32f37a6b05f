' TessalineForms STORE: a form with the control, on a store in a file. Control and store have to be
' registered, in the width of the program. The compiler that comes with Windows will do:
'   %windir%\Microsoft.NET\Framework64\v4.0.30319\vbc /target:winexe /platform:x64 /codepage:65001 TessalineForms.vb
' The declarations are what aximp and tlbimp would make of the type library, as far as they are used here.
Option Explicit On
Option Strict Off
Imports System
Imports System.Drawing
Imports System.Runtime.InteropServices
Imports System.Windows.Forms

<ComImport, Guid("28eef13c-4390-4823-aef8-0eece160529e"),
 InterfaceType(ComInterfaceType.InterfaceIsIDispatch)>
Public Interface IOrgPriseCharge
    <DispId(31)>
    WriteOnly Property TheClient As Object
    <DispId(32)>
    WriteOnly Property TheDatabase As Object
    <DispId(2)>
    WriteOnly Property DroitsUtilisateur As Object
    <DispId(9)>
    Sub Init()
End Interface

<ComImport, Guid("123a2f52-6bda-4176-859a-dcfc3b1e4f8a"),
 InterfaceType(ComInterfaceType.InterfaceIsIDispatch)>
Public Interface IOrgPriseChargeEvents
    <DispId(1)>
    Sub Sortir()
    <DispId(2)>
    Sub Enregistre(code As String, creation As Boolean)
    <DispId(3)>
    Sub Supprime(code As String)
    <DispId(4)>
    Sub Echec(procedure As String, numero As Integer, description As String)
End Interface

' The control as one of the form's. Keys, mnemonics and the focus are AxHost's business.
Public NotInheritable Class OrgPriseCharge
    Inherits AxHost

    Private ReadOnly told As IOrgPriseChargeEvents
    Private connection As ConnectionPointCookie

    Public Sub New(told As IOrgPriseChargeEvents)
        MyBase.New("4f1871cf-ae4d-4b9a-9033-b73ff2277ce1")
        Me.told = told
    End Sub

    ' From when the form has a window.
    Public ReadOnly Property Members As IOrgPriseCharge
        Get
            Return CType(GetOcx(), IOrgPriseCharge)
        End Get
    End Property

    Protected Overrides Sub CreateSink()
        connection = New ConnectionPointCookie(GetOcx(), told, GetType(IOrgPriseChargeEvents))
    End Sub

    Protected Overrides Sub DetachSink()
        If connection IsNot Nothing Then connection.Disconnect()
        connection = Nothing
    End Sub
End Class

<ComVisible(True), ClassInterface(ClassInterfaceType.None)>
Public NotInheritable Class BodyEvents
    Implements IOrgPriseChargeEvents

    Private ReadOnly form As Form
    Private ReadOnly title As String

    Public Sub New(form As Form)
        Me.form = form
        title = form.Text
    End Sub

    ' Nothing of the control runs any more when this comes: the form may go.
    Public Sub Sortir() Implements IOrgPriseChargeEvents.Sortir
        form.Close()
    End Sub

    Public Sub Enregistre(code As String, creation As Boolean) Implements IOrgPriseChargeEvents.Enregistre
        form.Text = title & " : " & code & If(creation, " créé", " enregistré")
    End Sub

    Public Sub Supprime(code As String) Implements IOrgPriseChargeEvents.Supprime
        form.Text = title & " : " & code & " supprimé"
    End Sub

    Public Sub Echec(procedure As String, numero As Integer, description As String) Implements IOrgPriseChargeEvents.Echec
        form.Text = title & " : " & procedure & ", " & description
    End Sub
End Class

Public NotInheritable Class BodyForm
    Inherits Form

    Private Const FullRights As Integer = 2
    Private ReadOnly control As OrgPriseCharge
    Private ReadOnly path As String

    Public Sub New(path As String)
        Me.path = path
        Text = "Organismes"
        ClientSize = New Size(900, 660)
        control = New OrgPriseCharge(New BodyEvents(Me))
        control.Dock = DockStyle.Fill
        Controls.Add(control)
    End Sub

    Protected Overrides Sub OnLoad(arguments As EventArgs)
        MyBase.OnLoad(arguments)
        Dim client As Object = CreateObject("TessalineStore.Client")
        Dim rights As Object = CreateObject("TessalineStore.Rights")
        rights.SetLevel("CONSULTATIONORGCHARGE", FullRights)
        control.Members.TheClient = client
        control.Members.TheDatabase = client.OpenDatabase(path)
        control.Members.DroitsUtilisateur = rights
        control.Members.Init()
    End Sub
End Class

Public Module Program
    <STAThread>
    Public Function Main(words As String()) As Integer
        If words.Length <> 1 Then
            MessageBox.Show("usage: TessalineForms STORE")
            Return 2
        End If
        Application.EnableVisualStyles()
        Application.Run(New BodyForm(words(0)))
        Return 0
    End Function
End Module
