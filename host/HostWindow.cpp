#include "host/HostWindow.h"

#include <commctrl.h>
#include <olectl.h>

#include <algorithm>

#include "com/ComBorder.h"
#include "com/LateBound.h"
#include "host/Menu.h"

namespace host {

using Microsoft::WRL::ComPtr;

namespace {

constexpr const wchar_t* kClassName = L"TessalineHost";
constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
constexpr UINT kLeave = WM_APP + 1;
constexpr UINT kEnterByTab = WM_APP + 2;
constexpr UINT_PTR kPoll = 1;
constexpr UINT kPollMilliseconds = 500;
constexpr int kHimetricToInch = 2540;

int pixels(LONG himetric, UINT dpi) {
  return MulDiv(himetric, static_cast<int>(dpi), kHimetricToInch);
}

}  // namespace

HostWindow::HostWindow(Journal& journal, Settings& settings)
    : journal_(journal),
      settings_(settings),
      frame_(new Frame(*this)),
      site_(new Site(*this, *frame_)),
      events_(new Events([this](const std::wstring& text) { show(text); },
                         [this](const std::wstring& text) { warn(text); })) {
  mnemonics_.cb = sizeof mnemonics_;
  create();
}

HostWindow::~HostWindow() {
  if (window_ != nullptr) DestroyWindow(window_);
  site_->detach();
  frame_->detach();
  events_->Release();
  site_->Release();
  frame_->Release();
}

void HostWindow::create() {
  WNDCLASSEXW type{};
  type.cbSize = sizeof type;
  type.lpfnWndProc = windowProcedure;
  type.hInstance = GetModuleHandleW(nullptr);
  type.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  type.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  type.lpszClassName = kClassName;
  RegisterClassExW(&type);
  CreateWindowExW(0, kClassName, kTitle, kStyle, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                  CW_USEDEFAULT, nullptr, makeMenu(), type.hInstance, this);
  if (window_ == nullptr) throw com::Error(HRESULT_FROM_WIN32(GetLastError()), "CreateWindowEx");
  status_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0,
                            0, 0, window_, nullptr, type.hInstance, nullptr);
}

void HostWindow::show(const std::wstring& status) {
  if (window_ == nullptr) return;
  SetWindowTextW(status_, status.c_str());
  journal_.write("status " + com::utf8(status));
}

void HostWindow::warn(const std::wstring& text) {
  MessageBoxW(window_, text.c_str(), kTitle, MB_OK | MB_ICONWARNING);
}

// What the status bar leaves to the control.
RECT HostWindow::room() const {
  RECT client{};
  RECT bar{};
  GetClientRect(window_, &client);
  if (GetWindowRect(status_, &bar) != FALSE) client.bottom -= bar.bottom - bar.top;
  client.bottom = std::max(client.top, client.bottom);
  return client;
}

void HostWindow::hold(const ComPtr<IUnknown>& control) {
  control_ = control;
  com::check(control_.As(&object_), "IOleObject");
  connect();
  fitToControl();
  putWhereItWas();
  RECT area = place();
  ShowWindow(window_, SW_SHOWDEFAULT);
  com::check(object_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_, 0, window_, &area),
             "the control could not be activated");
  listen();
  UpdateWindow(window_);
}

void HostWindow::connect() {
  com::check(object_->SetClientSite(site_), "SetClientSite");
  ComPtr<IPersistStreamInit> state;
  if (SUCCEEDED(control_.As(&state))) com::check(state->InitNew(), "InitNew");
  object_->SetHostNames(kTitle, nullptr);
  com::check(object_->GetExtent(DVASPECT_CONTENT, &extent_), "GetExtent");
  mnemonicsChanged();
}

// A control that does not tell of its changes is asked from time to time.
void HostWindow::listen() {
  events_->connect(*control_.Get());
  ComPtr<IConnectionPointContainer> container;
  if (SUCCEEDED(control_.As(&container)) &&
      SUCCEEDED(container->FindConnectionPoint(IID_IPropertyNotifySink, &changes_)) &&
      SUCCEEDED(changes_->Advise(static_cast<IPropertyNotifySink*>(site_), &cookie_))) {
    return;
  }
  changes_.Reset();
  SetTimer(window_, kPoll, kPollMilliseconds, nullptr);
}

SIZE HostWindow::naturalSize() const {
  const UINT dpi = GetDpiForWindow(window_);
  return {pixels(extent_.cx, dpi), pixels(extent_.cy, dpi)};
}

// Around the control's natural size, but never larger than the monitor's work area.
void HostWindow::fitToControl() {
  const SIZE natural = naturalSize();
  RECT bar{};
  GetWindowRect(status_, &bar);
  RECT outer{0, 0, natural.cx, natural.cy + (bar.bottom - bar.top)};
  AdjustWindowRectExForDpi(&outer, kStyle, TRUE, 0, GetDpiForWindow(window_));
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(window_, MONITOR_DEFAULTTOPRIMARY), &monitor);
  const RECT& work = monitor.rcWork;
  const LONG width = std::min(outer.right - outer.left, work.right - work.left);
  const LONG height = std::min(outer.bottom - outer.top, work.bottom - work.top);
  SetWindowPos(window_, nullptr, work.left + (work.right - work.left - width) / 2,
               work.top + (work.bottom - work.top - height) / 2, width, height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

// Not on a monitor that is gone.
void HostWindow::putWhereItWas() {
  std::optional<WINDOWPLACEMENT> placement = settings_.placement();
  if (!placement ||
      MonitorFromRect(&placement->rcNormalPosition, MONITOR_DEFAULTTONULL) == nullptr) {
    return;
  }
  placement->showCmd = SW_HIDE;
  SetWindowPlacement(window_, &*placement);
}

void HostWindow::keepPlace() {
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  if (GetWindowPlacement(window_, &placement) != FALSE) settings_.setPlacement(placement);
}

RECT HostWindow::place() const {
  const RECT client = room();
  const SIZE natural = naturalSize();
  return {-scrolled_.cx, -scrolled_.cy, std::max(client.right, natural.cx) - scrolled_.cx,
          std::max(client.bottom, natural.cy) - scrolled_.cy};
}

void HostWindow::placeControl() {
  updateScrollBars();
  ComPtr<IOleInPlaceObject> inPlace;
  if (control_ == nullptr || FAILED(control_.As(&inPlace))) return;
  const RECT client = room();
  const RECT area = place();
  inPlace->SetObjectRects(&area, &client);
}

void HostWindow::updateScrollBars() {
  const RECT client = room();
  const SIZE natural = naturalSize();
  scrolled_.cx = std::clamp(scrolled_.cx, 0L, std::max(0L, natural.cx - client.right));
  scrolled_.cy = std::clamp(scrolled_.cy, 0L, std::max(0L, natural.cy - client.bottom));
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = natural.cx - 1;
  info.nPage = static_cast<UINT>(client.right);
  info.nPos = scrolled_.cx;
  SetScrollInfo(window_, SB_HORZ, &info, TRUE);
  info.nMax = natural.cy - 1;
  info.nPage = static_cast<UINT>(client.bottom);
  info.nPos = scrolled_.cy;
  SetScrollInfo(window_, SB_VERT, &info, TRUE);
}

void HostWindow::scroll(int bar, WORD request) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(window_, bar, &info);
  const int page = static_cast<int>(info.nPage);
  const int line = std::max(1, page / 10);
  int position = info.nPos;
  switch (request) {
    case SB_LINEUP:
      position -= line;
      break;
    case SB_LINEDOWN:
      position += line;
      break;
    case SB_PAGEUP:
      position -= page;
      break;
    case SB_PAGEDOWN:
      position += page;
      break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      position = info.nTrackPos;
      break;
    default:
      return;
  }
  (bar == SB_HORZ ? scrolled_.cx : scrolled_.cy) = std::max(0, position);
  placeControl();
}

void HostWindow::setActiveObject(IOleInPlaceActiveObject* object) { active_ = object; }

// The window belongs to the control as a whole: it stays where it is.
void HostWindow::placed(const RECT&) { placeControl(); }

void HostWindow::mnemonicsChanged() {
  ComPtr<IOleControl> control;
  CONTROLINFO current{};
  current.cb = sizeof current;
  if (control_ != nullptr && SUCCEEDED(control_.As(&control)) &&
      SUCCEEDED(control->GetControlInfo(&current))) {
    mnemonics_ = current;
  }
}

// Nothing stands before or after the control: Tab comes round to its other end.
void HostWindow::leftByTab(const MSG& message) {
  PostMessageW(window_, kEnterByTab, message.wParam, message.lParam);
}

void HostWindow::enableModeless(bool enable) {
  modal_ += enable ? -1 : 1;
  journal_.write(enable ? "modeless on" : "modeless off");
}

// Which property it was does not matter: there is one that the host waits for.
void HostWindow::propertyChanged(DISPID) { leaveWhenAsked(); }

void HostWindow::leaveWhenAsked() {
  if (window_ != nullptr && wantsToLeave()) PostMessageW(window_, kLeave, 0, 0);
}

bool HostWindow::wantsToLeave() {
  ComPtr<IDispatch> automation;
  if (control_ == nullptr || FAILED(control_.As(&automation))) return false;
  return com::booleanOf(com::LateBound(automation).call(L"W_Sortir").get());
}

void HostWindow::enterControl() { enterControl(nullptr); }

void HostWindow::enterControl(MSG* message) {
  if (object_ != nullptr) {
    RECT area = place();
    object_->DoVerb(OLEIVERB_UIACTIVATE, message, site_, 0, window_, &area);
  }
}

void HostWindow::run() {
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (!translate(message)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
}

// Keys go to the active control first, then to the mnemonics of the control.
bool HostWindow::translate(MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST || window_ == nullptr) {
    return false;
  }
  const ComPtr<IOleInPlaceActiveObject> active = active_;
  if (active != nullptr && active->TranslateAccelerator(&message) == S_OK) return true;
  return window_ != nullptr && isMnemonic(message);
}

bool HostWindow::isMnemonic(MSG& message) {
  const bool candidate = message.message == WM_SYSKEYDOWN || message.message == WM_SYSCHAR ||
                         message.message == WM_KEYDOWN;
  ComPtr<IOleControl> control;
  if (!candidate || mnemonics_.hAccel == nullptr || control_ == nullptr ||
      !IsAccelerator(mnemonics_.hAccel, mnemonics_.cAccel, &message, nullptr) ||
      FAILED(control_.As(&control))) {
    return false;
  }
  return SUCCEEDED(control->OnMnemonic(&message));
}

// What the control still holds of the site outlives this window without reaching it.
void HostWindow::release() {
  KillTimer(window_, kPoll);
  events_->disconnect();
  if (changes_ != nullptr) {
    changes_->Unadvise(cookie_);
    changes_.Reset();
  }
  const ComPtr<IOleObject> object = std::move(object_);
  if (object != nullptr) {
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
  }
  active_.Reset();
  control_.Reset();
}

LRESULT CALLBACK HostWindow::windowProcedure(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam) {
  return com::comBorder<LRESULT>([&] {
    if (message == WM_NCCREATE) {
      auto* self =
          static_cast<HostWindow*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
      self->window_ = window;
      SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self == nullptr ? DefWindowProcW(window, message, wParam, lParam)
                           : self->handle(message, wParam, lParam);
  });
}

LRESULT HostWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  const HWND window = window_;
  switch (message) {
    case WM_SIZE:
      SendMessageW(status_, WM_SIZE, 0, 0);  // it takes its place by itself
      if (wParam != SIZE_MINIMIZED) placeControl();
      return 0;
    case WM_HSCROLL:
      scroll(SB_HORZ, LOWORD(wParam));
      return 0;
    case WM_VSCROLL:
      scroll(SB_VERT, LOWORD(wParam));
      return 0;
    case WM_DPICHANGED: {
      const RECT& wanted = *reinterpret_cast<const RECT*>(lParam);
      SetWindowPos(window, nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
                   wanted.bottom - wanted.top, SWP_NOZORDER | SWP_NOACTIVATE);
      placeControl();
      return 0;
    }
    case WM_ACTIVATE:
      if (active_ != nullptr) active_->OnFrameWindowActivate(LOWORD(wParam) != WA_INACTIVE);
      break;
    case WM_SETFOCUS:
      if (active_ != nullptr) {
        HWND target = nullptr;
        if (SUCCEEDED(active_->GetWindow(&target)) && target != nullptr) SetFocus(target);
      }
      return 0;
    case WM_TIMER:
      if (modal_ == 0) leaveWhenAsked();
      return 0;
    case kEnterByTab: {
      MSG key{window, WM_KEYDOWN, wParam, lParam, 0, {}};
      enterControl(&key);
      return 0;
    }
    case kLeave:
      journal_.write("W_Sortir");
      DestroyWindow(window);
      return 0;
    case WM_COMMAND:
      if (lParam == 0 && runMenuCommand(LOWORD(wParam), window)) return 0;
      break;
    case WM_DESTROY:
      keepPlace();
      release();
      PostQuitMessage(0);
      return 0;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      window_ = nullptr;
      journal_.write("closed");
      break;
    default:
      break;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace host
