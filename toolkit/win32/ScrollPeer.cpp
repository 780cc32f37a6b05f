#include "toolkit/win32/ScrollPeer.h"

#include <algorithm>
#include <optional>

namespace toolkit::win32 {

namespace {

std::optional<int> valueAfter(WORD code, const ScrollBar& bar, int track) {
  switch (code) {
    case SB_LINEUP:
      return bar.value() - 1;
    case SB_LINEDOWN:
      return bar.value() + 1;
    case SB_PAGEUP:
      return bar.value() - bar.largeChange();
    case SB_PAGEDOWN:
      return bar.value() + bar.largeChange();
    case SB_TOP:
      return bar.min();
    case SB_BOTTOM:
      return bar.max();
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      return track;
    default:
      return std::nullopt;
  }
}

}  // namespace

ControlPeer::Blueprint ScrollPeer::blueprint() const {
  const bool vertical = bar_.direction() == ScrollBar::Direction::Vertical;
  return {L"SCROLLBAR", static_cast<DWORD>(vertical ? SBS_VERT : SBS_HORZ), 0};
}

// The window's positions end a page before its maximum; the object's value reaches its own.
void ScrollPeer::copy(Aspect what) {
  if (what != Aspect::Range && what != Aspect::Value) return;
  const bool empty = bar_.max() <= bar_.min();
  const int page = std::max(bar_.largeChange(), 1);
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
  info.nMin = bar_.min();
  info.nMax = empty ? bar_.min() : bar_.max() + page - 1;
  info.nPage = empty ? 1U : static_cast<UINT>(page);
  info.nPos = bar_.value();
  SetScrollInfo(window(), SB_CTL, &info, TRUE);
}

void ScrollPeer::scrolled(WORD code) {
  if (copying()) return;
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  GetScrollInfo(window(), SB_CTL, &info);
  const std::optional<int> wanted = valueAfter(code, bar_, info.nTrackPos);
  if (!wanted || *wanted == bar_.value()) return;
  const auto merge = code == SB_THUMBTRACK ? Host::Merge::Yes : Host::Merge::No;
  host().note(*this, merge, [this, value = *wanted] { bar_.userScroll(value); });
}

}  // namespace toolkit::win32
