// Characters that a key press can be besides those that are written (TextBox::onKeyPress).
#pragma once

namespace toolkit {

inline constexpr char32_t kBackspace = 8;
inline constexpr char32_t kEnter = 13;

}  // namespace toolkit
