#pragma once

#include <string>

namespace access_reader {

/// Looks at the first page and the length before anything else touches the file. Throws Failure for what is
/// no Access file, one of a version that cannot be read, one whose length is not in whole pages, and one with
/// a password: whoever set it did not mean its contents to be read without.
void checkHeader(const std::string& path);

}  // namespace access_reader
