#include "tests/project/project_fixture.h"

#include <vector>

#include "core/session.h"
#include "project/button_record.h"

namespace kp::test {

Project MakeProject(TestEnv& t, int n) {
  Project p;
  SetDefaultMainParams(p, t.env);
  for (int i = 0; i < n; ++i) AddNewButton(p, t.env);
  return p;
}

std::string LineOf(const std::string& text, int k) {
  size_t start = 0;
  for (int i = 1; i < k; ++i) {
    start = text.find("\r\n", start);
    if (start == std::string::npos) return "";
    start += 2;
  }
  size_t end = text.find("\r\n", start);
  return text.substr(start, end == std::string::npos ? std::string::npos : end - start);
}

static std::vector<std::string> Split(const std::string& line) {
  std::vector<std::string> f;
  size_t start = 0;
  for (size_t pos; (pos = line.find('|', start)) != std::string::npos; start = pos + 1)
    f.push_back(line.substr(start, pos - start));
  return f;
}

std::string FieldOf(const std::string& line, int no) {
  auto f = Split(line);
  return no < static_cast<int>(f.size()) ? f[static_cast<size_t>(no)] : "<none>";
}

std::string WithField(const std::string& line, int no, const std::string& value) {
  auto f = Split(line);
  if (no < static_cast<int>(f.size())) f[static_cast<size_t>(no)] = value;
  std::string out;
  for (auto& s : f) out += s + "|";
  return out;
}

}  // namespace kp::test
