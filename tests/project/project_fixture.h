// Helpers shared by the project-file tests.
#pragma once

#include <string>

#include "core/model.h"
#include "tests/support/test_env.h"

namespace kp::test {

// A project with `n` default buttons, as the add command makes them.
Project MakeProject(TestEnv& t, int n);

// Line k (from 1) of a file's text split at CR LF.
std::string LineOf(const std::string& text, int k);

// Field `no` (from 0) of a "|"-terminated line.
std::string FieldOf(const std::string& line, int no);

// A line with the field `no` replaced.
std::string WithField(const std::string& line, int no, const std::string& value);

}  // namespace kp::test
