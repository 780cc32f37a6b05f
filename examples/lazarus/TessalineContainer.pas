{ Lazarus' TActiveXContainer with what the keyboard needs. It shows a control, but passes no key to it
  and does not make it UI-active; this one does both, and moves on to the form's next control when the
  user tabs out of the last field. }
unit TessalineContainer;

{$mode objfpc}{$H+}

interface

uses
  Classes, Windows, ActiveX, Controls, Forms, ActiveXContainer;

type
  TTessalineContainer = class(TActiveXContainer)
  private
    function UsesKey(var Msg: TMsg): boolean;
    function IsMnemonic(var Msg: TMsg): boolean;
    procedure MoveOn(Forward: boolean);
  protected
    procedure DoEnter; override;
    procedure DoExit; override;
  public
    constructor Create(TheOwner: TComponent); override;
    destructor Destroy; override;
  end;

implementation

type
  // FindNextControl is for forms themselves only.
  TTabOrder = class(TCustomForm);

  // The declaration in the unit ActiveX leaves out the gaps that the compiler of the control has.
  {$push}{$packrecords C}
  TMnemonics = record
    Size: DWORD;
    Accelerators: HACCEL;
    Count: word;
    Flags: DWORD;
  end;
  {$pop}

var
  Containers: TFPList;
  Hook: HHOOK;

constructor TTessalineContainer.Create(TheOwner: TComponent);
begin
  inherited Create(TheOwner);
  TabStop := True;
  Containers.Add(Self);
end;

destructor TTessalineContainer.Destroy;
begin
  Containers.Remove(Self);
  inherited Destroy;
end;

{ The form has made this container its active control: the keyboard goes on to the field of the control
  that had it, or, when Tab has come here, to its first or last one. }
procedure TTessalineContainer.DoEnter;
var
  Tab: TMsg;
  How: PMsg = nil;
begin
  inherited DoEnter;
  if not Active then Exit;
  if GetKeyState(VK_TAB) < 0 then
  begin
    FillChar(Tab, SizeOf(Tab), 0);
    Tab.hwnd := Handle;
    Tab.message := WM_KEYDOWN;
    Tab.wParam := VK_TAB;
    How := @Tab;
  end;
  (ComServer as IOleObject).DoVerb(OLEIVERB_UIACTIVATE, How, Self as IOleClientSite, 0, Handle, ClientRect);
end;

procedure TTessalineContainer.DoExit;
begin
  if Active then (ComServer as IOleInPlaceObject).UIDeactivate;
  inherited DoExit;
end;

{ A key for a window of the control: what it has no use for is left to that window, but for Tab. }
function TTessalineContainer.UsesKey(var Msg: TMsg): boolean;
begin
  Result := (ComServer as IOleInPlaceActiveObject).TranslateAccelerator(Msg) = S_OK;
  if Result or (Msg.message <> WM_KEYDOWN) or (Msg.wParam <> VK_TAB) then Exit;
  MoveOn(GetKeyState(VK_SHIFT) >= 0);
  Result := True;
end;

procedure TTessalineContainer.MoveOn(Forward: boolean);
var
  Next: TWinControl;
begin
  Next := TTabOrder(GetParentForm(Self)).FindNextControl(Self, Forward, True, False);
  if Next <> nil then Next.SetFocus;
end;

{ Alt and a letter, typed beside the control: a mnemonic of what the control shows at this moment? }
function TTessalineContainer.IsMnemonic(var Msg: TMsg): boolean;
var
  Control: IOleControl;
  Known: TMnemonics;
begin
  Control := ComServer as IOleControl;
  FillChar(Known, SizeOf(Known), 0);
  Known.Size := SizeOf(Known);
  Result := (Control.GetControlInfo(PtagCONTROLINFO(@Known)^) = S_OK) and
    IsAccelerator(Known.Accelerators, Known.Count, @Msg, nil);
  if not Result then Exit;
  SetFocus;
  Control.OnMnemonic(Msg);
end;

{ Each message that the program takes from its queue, before it is dispatched. True: it is used up. }
function TakenByAContainer(var Msg: TMsg): boolean;
var
  I: integer;
  Container: TTessalineContainer;
  Form: TCustomForm;
begin
  Result := False;
  for I := 0 to Containers.Count - 1 do
  begin
    Container := TTessalineContainer(Containers[I]);
    if not (Container.Active and Container.HandleAllocated) then Continue;
    Form := GetParentForm(Container);
    if IsChild(Container.Handle, Msg.hwnd) then
    begin
      // The form does not see a click on the control's own windows, nor a focus that the control takes.
      if Form.ActiveControl <> Container then Container.SetFocus;
      if Msg.message <= WM_KEYLAST then Result := Container.UsesKey(Msg);
      Exit;
    end;
    if (Msg.message = WM_SYSCHAR) and IsChild(Form.Handle, Msg.hwnd) then
    begin
      Result := Container.IsMnemonic(Msg);
      if Result then Exit;
    end;
  end;
end;

function Filter(Code: longint; Removed: WPARAM; Message: LPARAM): LRESULT; stdcall;
var
  Msg: PMsg absolute Message;
begin
  if (Code = HC_ACTION) and (Removed = PM_REMOVE) then
    case Msg^.message of
      WM_KEYFIRST..WM_KEYLAST, WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN:
        if TakenByAContainer(Msg^) then Msg^.message := WM_NULL;
    end;
  Result := CallNextHookEx(Hook, Code, Removed, Message);
end;

initialization
  Containers := TFPList.Create;
  Hook := SetWindowsHookEx(WH_GETMESSAGE, @Filter, 0, GetCurrentThreadId);

finalization
  UnhookWindowsHookEx(Hook);
  Containers.Free;
end.
