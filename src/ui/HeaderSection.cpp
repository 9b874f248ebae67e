#include "ui/HeaderSection.h"

namespace kestrovan {

QString HeaderSection::languageLabel() const
{
    return QString::fromUtf8(shortName(language()).data());
}

QString HeaderSection::languageHelp() const
{
    return isEnglish() ? "Switch to Bahasa Indonesia" : "Ganti ke English";
}

void HeaderSection::switchLanguage()
{
    appState().setLanguage(isEnglish() ? AppLanguage::indonesian : AppLanguage::english);
}

} // namespace kestrovan
