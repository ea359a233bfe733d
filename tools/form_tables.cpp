// Prints the forms' tables as JSON, for those who look for a control on a screen.

#include <iostream>
#include <string>
#include <string_view>

#include "ui/ftp_form.h"
#include "ui/grp_form.h"
#include "ui/user_form.h"

namespace {

using karvel::ControlRow;
using karvel::FormTable;
using karvel::Rect;

std::string quoted(std::string_view text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') json += '\\';
    json += c;
  }
  return json + "\"";
}

void print(const ControlRow& row, bool last) {
  const Rect& rect = row.rect;
  std::cout << "    {\"name\": " << quoted(row.name) << ", \"index\": " << row.index
            << ", \"caption\": " << quoted(row.caption)
            << ", \"accessibleName\": " << quoted(row.accessibleName)
            << ", \"hidden\": " << ((row.style & ControlRow::kHidden) != 0 ? "true" : "false")
            << ", \"rect\": [" << rect.x << ", " << rect.y << ", " << rect.width << ", "
            << rect.height << "]}" << (last ? "\n" : ",\n");
}

void print(const FormTable& form, bool last) {
  std::cout << "  " << quoted(form.name) << ": {\"size\": [" << form.width << ", " << form.height
            << "], \"controls\": [\n";
  for (const ControlRow& row : form.controls) print(row, &row == &form.controls.back());
  std::cout << "  ]}" << (last ? "\n" : ",\n");
}

}  // namespace

int main() {
  std::cout << "{\n";
  print(karvel::kFtpFormTable, false);
  print(karvel::kGrpFormTable, false);
  print(karvel::kUserFormTable, true);
  std::cout << "}\n";
}
