// What may stand in a field that is typed into.
#pragma once

#include <string>
#include <string_view>

namespace toolkit {

// The characters of the store's marks, U+00FE and U+00FD.
bool isMark(char32_t character);

// Without the mark bytes 0xFE and 0xFD.
bool holdsMarkBytes(std::string_view text);
std::string withoutMarkBytes(std::string_view text);

// What a user's edit may leave in a field that held `before`: no mark, bytes or characters, and at
// most `limit` characters (0: any number), but for a text that was longer already.
std::string acceptedEdit(std::string_view edit, std::string_view before, int limit);

// A key that the user pressed, as KeyPress has to hear of it: Enter, Backspace or a character.
bool isKeyPress(char32_t key);

}  // namespace toolkit
