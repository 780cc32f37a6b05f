#include "toolkit/win32/ButtonPeer.h"
#include "toolkit/win32/ChoicePeer.h"
#include "toolkit/win32/ComboPeer.h"
#include "toolkit/win32/ListPeer.h"
#include "toolkit/win32/ScrollPeer.h"
#include "toolkit/win32/StaticPeers.h"
#include "toolkit/win32/TabsPeers.h"
#include "toolkit/win32/TextPeer.h"

namespace toolkit::win32 {

std::shared_ptr<ControlPeer> makePeer(SurfaceWindow::Implementation& host, Control& control) {
  switch (control.kind()) {
    case Kind::TextBox:
      return std::make_shared<TextPeer>(host, static_cast<TextBox&>(control));
    case Kind::ComboBox:
      return std::make_shared<ComboPeer>(host, static_cast<ComboBox&>(control));
    case Kind::ListBox:
      return std::make_shared<ListPeer>(host, static_cast<ListBox&>(control));
    case Kind::Frame:
      return std::make_shared<FramePeer>(host, static_cast<Frame&>(control));
    case Kind::Label:
      return std::make_shared<LabelPeer>(host, static_cast<Label&>(control));
    case Kind::ScrollBar:
      return std::make_shared<ScrollPeer>(host, static_cast<ScrollBar&>(control));
    case Kind::SSTab:
      return std::make_shared<TabsPeer>(host, static_cast<SSTab&>(control));
    case Kind::TabPage:
      return std::make_shared<PagePeer>(host, static_cast<TabPage&>(control));
    case Kind::OptionButton:
    case Kind::CheckBox:
      return std::make_shared<ChoicePeer>(host, control);
    default:
      return std::make_shared<ButtonPeer>(host, control);
  }
}

}  // namespace toolkit::win32
