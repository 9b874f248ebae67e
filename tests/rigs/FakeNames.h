#pragma once

#include <string>
#include <vector>

/// Names that exist in this test program alone: it takes the place of the C library's getaddrinfo, asks that one for
/// all other names, and so puts even libcurl's own threads under the test's control.
namespace kestrovan::rigs::fakeNames {

void leadTo(const std::string& name, const std::vector<std::string>& numericAddresses);

/// Looking up `name` takes until release().
void hang(const std::string& name);
int hanging(); ///< how many look-ups hang now
void release();

} // namespace kestrovan::rigs::fakeNames
