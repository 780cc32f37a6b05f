{ A form with the control between two fields of its own, on a store in a file. }
unit BodyForm;

{$mode objfpc}{$H+}

interface

uses
  Classes, SysUtils, Variants, ComObj, Controls, Forms, StdCtrls, ExtCtrls, TessalineContainer;

type
  TBodyForm = class(TForm)
  private
    FBefore: TEdit;
    FAfter: TEdit;
    FContainer: TTessalineContainer;
    FLeaving: TTimer;
    procedure AskWhetherToLeave(Sender: TObject);
    procedure TakeDown(Sender: TObject; var CloseAction: TCloseAction);
    function NewEdit(const Shown: string; Where: TAlign): TEdit;
  public
    constructor CreateNew(TheOwner: TComponent; Number: integer = 0); override;
    { Gives the control the store in that file, full rights, and starts it. }
    procedure Start(const Path: string);
  end;

implementation

const
  kProgramme = 'Tessaline.Ctr_OrgPriseCharge';
  kFullRights = 2;
  kMilliseconds = 200;

constructor TBodyForm.CreateNew(TheOwner: TComponent; Number: integer);
begin
  inherited CreateNew(TheOwner, Number);
  Caption := 'Organismes ' + IntToStr(Number);
  SetBounds(20 * Number, 20 * Number, 900, 660);
  FBefore := NewEdit('avant', alTop);
  FContainer := TTessalineContainer.Create(Self);
  FContainer.Align := alClient;
  FContainer.TabOrder := 1;
  FAfter := NewEdit('après', alBottom);
  FLeaving := TTimer.Create(Self);
  FLeaving.Enabled := False;
  FLeaving.Interval := kMilliseconds;
  FLeaving.OnTimer := @AskWhetherToLeave;
  OnClose := @TakeDown;
end;

function TBodyForm.NewEdit(const Shown: string; Where: TAlign): TEdit;
begin
  Result := TEdit.Create(Self);
  Result.Parent := Self;
  Result.Align := Where;
  Result.Text := Shown;
end;

procedure TBodyForm.Start(const Path: string);
var
  Client, Rights: variant;
begin
  Client := CreateOleObject('TessalineStore.Client');
  Rights := CreateOleObject('TessalineStore.Rights');
  Rights.SetLevel('CONSULTATIONORGCHARGE', kFullRights);
  FContainer.OleClassName := kProgramme;
  FContainer.Active := True;
  FContainer.vObject.TheClient := Client;
  FContainer.vObject.TheDatabase := Client.OpenDatabase(UTF8Decode(Path));
  FContainer.vObject.DroitsUtilisateur := Rights;
  FContainer.vObject.Init;
  FLeaving.Enabled := True;
end;

{ W_Sortir can be read at any time, also while the control shows a box. }
procedure TBodyForm.AskWhetherToLeave(Sender: TObject);
begin
  if FContainer.vObject.W_Sortir then Close;
end;

{ The control goes at once, and a box that it shows with it; the form itself goes when Lazarus is idle. }
procedure TBodyForm.TakeDown(Sender: TObject; var CloseAction: TCloseAction);
begin
  FLeaving.Enabled := False;
  FContainer.Active := False;
  CloseAction := caFree;
end;

end.
