// Filling the list of 999 acronyms in a real window, against a bare loop of list messages with
// redraw off. Takes --benchmark_out=FILE and writes JSON of Google Benchmark's form (that library
// is not at hand for Windows).
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/ComboBox.h"
#include "toolkit/Surface.h"
#include "toolkit/win32/SurfaceWindow.h"

namespace {

constexpr int kLines = 999;
constexpr int kRounds = 60;

std::vector<toolkit::ListItem> acronyms(int first) {
  std::vector<toolkit::ListItem> lines;
  lines.reserve(kLines);
  for (int i = first; i < first + kLines; ++i) {
    lines.push_back({"ORGANISME " + std::to_string(i), i});
  }
  return lines;
}

// The median of the rounds, in microseconds.
double median(const std::function<void()>& round) {
  LARGE_INTEGER frequency;
  QueryPerformanceFrequency(&frequency);
  std::vector<double> times;
  for (int i = 0; i < kRounds; ++i) {
    LARGE_INTEGER start;
    LARGE_INTEGER end;
    QueryPerformanceCounter(&start);
    round();
    QueryPerformanceCounter(&end);
    times.push_back(static_cast<double>(end.QuadPart - start.QuadPart) * 1e6 /
                    static_cast<double>(frequency.QuadPart));
  }
  std::sort(times.begin(), times.end());
  return times[kRounds / 2];
}

void fillBare(HWND combo, const std::vector<std::wstring>& lines) {
  SendMessageW(combo, WM_SETREDRAW, FALSE, 0);
  SendMessageW(combo, CB_RESETCONTENT, 0, 0);
  SendMessageW(combo, CB_INITSTORAGE, lines.size(), 32 * static_cast<LPARAM>(lines.size()));
  for (const std::wstring& line : lines) {
    SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
  }
  SendMessageW(combo, WM_SETREDRAW, TRUE, 0);
}

HWND bareCombo(HWND parent) {
  return CreateWindowExW(0, L"COMBOBOX", L"",
                         WS_CHILD | WS_VISIBLE | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL, 10,
                         200, 200, 200, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
}

// Written digit by digit: the C locale of the process is not ours.
std::string inMicroseconds(double time) {
  const auto thousandths = static_cast<long long>(time * 1000);
  std::string decimals = std::to_string(thousandths % 1000);
  decimals.insert(0, 3 - decimals.size(), '0');
  return std::to_string(thousandths / 1000) + "." + decimals;
}

std::string entry(std::string_view name, double time, std::string_view more) {
  return R"({"run_name":")" + std::string(name) +
         R"(","run_type":"iteration","time_unit":"us","real_time":)" + inMicroseconds(time) +
         std::string(more) + "}";
}

bool write(const char* path, const std::string& text) {
  FILE* file = std::fopen(path, "wb");
  if (!file) return false;
  const bool whole = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  return std::fclose(file) == 0 && whole;
}

std::string measure(HWND window) {
  toolkit::Surface surface("bench");
  toolkit::ComboBox combo(&surface, "Cbo_SigleOrgChg");
  combo.setPlace({150, 150, 3000, 315});
  const toolkit::win32::SurfaceWindow windows(surface, window, {0, 0, 400, 150}, {});
  ShowWindow(windows.handle(), SW_SHOW);

  // Two lists in turn: the same one again would be no change.
  const std::vector<toolkit::ListItem> lists[] = {acronyms(1000), acronyms(3000)};
  const std::vector<toolkit::ListItem>& lines = lists[0];
  std::vector<std::wstring> wide;
  wide.reserve(kLines);
  for (const toolkit::ListItem& line : lines) wide.emplace_back(line.text.begin(), line.text.end());
  const HWND bare = bareCombo(window);
  const double baseline = median([&] { fillBare(bare, wide); });
  // The peer fills its window when it is looked at next.
  const HWND filled = GetWindow(windows.handle(), GW_CHILD);
  int round = 0;
  LRESULT held = 0;
  const double measured = median([&] {
    combo.setItems(lists[round++ % 2]);
    held = SendMessageW(filled, CB_GETCOUNT, 0, 0);
  });
  if (held != kLines) return {};
  return R"({"benchmarks":[)" + entry("FillAcronymList/baseline", baseline, "") + "," +
         entry("FillAcronymList", measured, R"(,"limit":1.5)") + "]}\n";
}

}  // namespace

int main(int count, char** arguments) {
  constexpr std::string_view kOut = "--benchmark_out=";
  const char* path = nullptr;
  for (int i = 1; i < count; ++i) {
    if (std::string_view(arguments[i]).starts_with(kOut)) path = arguments[i] + kOut.size();
  }
  if (!path) {
    std::fputs("usage: list_fill_bench --benchmark_out=FILE\n", stderr);
    return 2;
  }
  const HWND window =
      CreateWindowExW(0, L"STATIC", L"bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 500, 400,
                      nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  const std::string result = measure(window);
  DestroyWindow(window);
  if (result.empty()) {
    std::fputs("the window did not take the lines\n", stderr);
    return 1;
  }
  return write(path, result) ? 0 : 1;
}
