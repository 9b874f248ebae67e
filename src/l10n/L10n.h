#pragma once

#include "l10n/AppLanguage.h"
#include "l10n/L10nKey.h"

#include <string>

namespace kestrovan {

/// The table of every fixed text of the interface, in both languages. Stateless; any thread.
class L10n {
public:
    L10n() = delete;

    /// The English text for `english`, the Indonesian one for anything else. Never fails and is never empty.
    static std::string text(const L10nKey& key, AppLanguage lang);

private:
    static std::string englishText(const L10nKey& key);
    static std::string indonesianText(const L10nKey& key);
};

} // namespace kestrovan
