#include "l10n/L10n.h"

namespace kestrovan {

std::string L10n::text(const L10nKey& key, AppLanguage lang)
{
    return lang == AppLanguage::english ? englishText(key) : indonesianText(key);
}

} // namespace kestrovan
