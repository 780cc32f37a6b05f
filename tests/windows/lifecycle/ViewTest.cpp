// The control's picture in the device contexts of containers.
#include <cstddef>
#include <vector>

#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using Microsoft::WRL::ComPtr;

constexpr int kWidth = 600;
constexpr int kHeight = 400;
constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;

// A bitmap in memory, 32 bits a pixel, its first row on top.
class Paper {
 public:
  Paper() : context_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO shape{};
    shape.bmiHeader.biSize = sizeof shape.bmiHeader;
    shape.bmiHeader.biWidth = kWidth;
    shape.bmiHeader.biHeight = -kHeight;
    shape.bmiHeader.biPlanes = 1;
    shape.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(context_, &shape, DIB_RGB_COLORS, &bits, nullptr, 0);
    pixels_ = static_cast<const DWORD*>(bits);
    before_ = SelectObject(context_, bitmap_);
  }
  Paper(const Paper&) = delete;
  Paper& operator=(const Paper&) = delete;
  ~Paper() {
    SelectObject(context_, before_);
    DeleteObject(bitmap_);
    DeleteDC(context_);
  }

  HDC context() const { return context_; }
  std::vector<DWORD> pixels() const {
    GdiFlush();
    return {pixels_, pixels_ + kPixels};
  }

 private:
  HDC context_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ before_ = nullptr;
  const DWORD* pixels_ = nullptr;
};

class Picture : public ControlTest {
 protected:
  HRESULT draw(const Paper& paper, const RECTL& bounds) {
    ComPtr<IViewObject2> view;
    control().host.control()->QueryInterface(IID_PPV_ARGS(&view));
    return view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, paper.context(), &bounds,
                      nullptr, nullptr, 0);
  }
};

TEST_F(Picture, IsTheSameWhereTheAxisRunsUp) {
  const Paper down;
  ASSERT_EQ(draw(down, {0, 0, kWidth, kHeight}), S_OK);
  const Paper up;
  SetMapMode(up.context(), MM_ANISOTROPIC);
  SetWindowExtEx(up.context(), kWidth, kHeight, nullptr);
  SetViewportExtEx(up.context(), kWidth, -kHeight, nullptr);
  SetViewportOrgEx(up.context(), 0, kHeight, nullptr);
  ASSERT_EQ(draw(up, {0, kHeight, kWidth, 0}), S_OK);
  EXPECT_TRUE(up.pixels() == down.pixels());
  EXPECT_FALSE(std::vector<DWORD>(kPixels, down.pixels()[0]) == down.pixels());
}

TEST_F(Picture, LeavesTheContextAsItWas) {
  const Paper paper;
  SetMapMode(paper.context(), MM_HIMETRIC);
  ASSERT_EQ(draw(paper, {0, 0, 10000, -8000}), S_OK);
  EXPECT_EQ(GetMapMode(paper.context()), MM_HIMETRIC);
  POINT corner{10000, -8000};
  LPtoDP(paper.context(), &corner, 1);
  EXPECT_GT(corner.y, 0);
}

}  // namespace
}  // namespace lifecycle
