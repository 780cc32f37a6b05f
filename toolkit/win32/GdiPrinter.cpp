#include <algorithm>
#include <stdexcept>

#include "toolkit/win32/Handles.h"
#include "toolkit/win32/PrinterList.h"
#include "toolkit/win32/Scale.h"
#include "toolkit/win32/WideText.h"

namespace toolkit::win32 {

namespace {

constexpr int kTwipsPerInch = 1440;

// Positions are kept in twips and turned into device units when something is drawn, so that
// roundings do not add up along a line or down a page.
class GdiPrinter final : public Printer {
 public:
  explicit GdiPrinter(const std::string& deviceName)
      : context_(CreateDCW(L"WINSPOOL", wide(deviceName).c_str(), nullptr, nullptr)) {
    if (!context_) throw std::runtime_error("the system refuses the printer");
  }
  GdiPrinter(const GdiPrinter&) = delete;
  GdiPrinter& operator=(const GdiPrinter&) = delete;
  ~GdiPrinter() override {
    if (open_) AbortDoc(context_.get());
  }

  int currentX() const override { return x_; }
  int currentY() const override { return y_; }
  void setCurrentX(int twips) override { x_ = twips; }
  void setCurrentY(int twips) override { y_ = twips; }

  std::string fontName() const override { return fontName_; }
  void setFontName(std::string_view name) override {
    fontName_ = name;
    font_.reset();
  }
  int fontSize() const override { return fontSize_; }
  void setFontSize(int points) override {
    fontSize_ = points;
    font_.reset();
  }
  void setBold(bool bold) override {
    bold_ = bold;
    font_.reset();
  }
  void setUnderline(bool underline) override {
    underline_ = underline;
    font_.reset();
  }

  void setTitle(std::string_view title) override { title_ = wide(title); }

  int textWidth(std::string_view text) override {
    const std::wstring characters = wide(text);
    const Selected font(context_.get(), this->font());
    SIZE size{};
    if (!GetTextExtentPoint32W(context_.get(), characters.c_str(),
                               static_cast<int>(characters.size()), &size)) {
      throw std::runtime_error("the printer does not measure");
    }
    return MulDiv(size.cx, kTwipsPerInch, capability(LOGPIXELSX));
  }
  int textHeight() override {
    const Selected font(context_.get(), this->font());
    TEXTMETRICW metrics{};
    GetTextMetricsW(context_.get(), &metrics);
    return MulDiv(metrics.tmHeight + metrics.tmExternalLeading, kTwipsPerInch,
                  capability(LOGPIXELSY));
  }
  int pageWidth() override {
    return MulDiv(capability(HORZRES), kTwipsPerInch, capability(LOGPIXELSX));
  }
  int pageHeight() override {
    return MulDiv(capability(VERTRES), kTwipsPerInch, capability(LOGPIXELSY));
  }

  std::optional<Margins> margins() override {
    const int paper = GetDeviceCaps(context_.get(), PHYSICALWIDTH);
    if (paper <= 0) return std::nullopt;
    const int left = GetDeviceCaps(context_.get(), PHYSICALOFFSETX);
    const int right = std::max(0, paper - left - capability(HORZRES));
    return Margins{MulDiv(left, kTwipsPerInch, capability(LOGPIXELSX)),
                   MulDiv(right, kTwipsPerInch, capability(LOGPIXELSX))};
  }

  void print(std::string_view text, LineEnd end) override {
    openJob();
    const std::wstring characters = wide(text);
    const Selected font(context_.get(), this->font());
    SetBkMode(context_.get(), TRANSPARENT);
    if (!characters.empty() &&
        !TextOutW(context_.get(), MulDiv(x_, capability(LOGPIXELSX), kTwipsPerInch),
                  MulDiv(y_, capability(LOGPIXELSY), kTwipsPerInch), characters.c_str(),
                  static_cast<int>(characters.size()))) {
      throw std::runtime_error("the printer refuses a text");
    }
    if (end == LineEnd::Stay) {
      x_ += textWidth(text);
      return;
    }
    x_ = 0;
    y_ += textHeight();
  }

  void newPage() override {
    openJob();
    require(EndPage(context_.get()), "the printer refuses the end of a page");
    require(StartPage(context_.get()), "the printer refuses a page");
    x_ = y_ = 0;
  }

  void endDoc() override {
    x_ = y_ = 0;
    if (!open_) return;
    open_ = false;
    // A page that does not end must not keep those before it.
    const int page = EndPage(context_.get());
    require(EndDoc(context_.get()), "the printer refuses the end of the job");
    require(page, "the printer refuses the end of a page");
  }

 private:
  static void require(int result, const char* what) {
    if (result <= 0) throw std::runtime_error(what);
  }

  int capability(int index) const { return std::max(1, GetDeviceCaps(context_.get(), index)); }

  HFONT font() {
    if (!font_) {
      font_ = makeFont(wide(fontName_), MulDiv(fontSize_, capability(LOGPIXELSY), 72), bold_,
                       underline_);
    }
    return font_.get();
  }

  void openJob() {
    if (open_) return;
    DOCINFOW document{};
    document.cbSize = sizeof document;
    document.lpszDocName = title_.c_str();
    if (!refused_) refused_ = StartDocW(context_.get(), &document) <= 0;
    if (refused_) throw std::runtime_error("the printer refuses the job");
    if (StartPage(context_.get()) <= 0) {
      AbortDoc(context_.get());
      throw std::runtime_error("the printer refuses a page");
    }
    open_ = true;
  }

  OwnedContext context_;
  OwnedFont font_;
  std::string fontName_ = "Courier New";
  int fontSize_ = 10;
  bool bold_ = false;
  bool underline_ = false;
  std::wstring title_ = L"Tessaline";
  int x_ = 0;
  int y_ = 0;
  bool open_ = false;
  bool refused_ = false;  // asked for again, each text would bring the driver's questions anew
};

}  // namespace

std::unique_ptr<Printer> makeGdiPrinter(const std::string& deviceName) {
  return std::make_unique<GdiPrinter>(deviceName);
}

}  // namespace toolkit::win32
