#include "ui/Sheets.h"

#include <algorithm>

namespace kestrovan {

bool Sheets::isShown(Sheet sheet) const
{
    switch (sheet) {
    case Sheet::settings:
        return showSettings_;
    case Sheet::about:
        return showAbout_;
    case Sheet::intruderGallery:
        return showIntruderGallery_;
    case Sheet::update:
        break;
    }
    return updateManager_.showUpdateModal;
}

void Sheets::setShown(Sheet sheet, bool shown)
{
    switch (sheet) {
    case Sheet::settings:
        showSettings_ = shown;
        break;
    case Sheet::about:
        showAbout_ = shown;
        break;
    case Sheet::intruderGallery:
        showIntruderGallery_ = shown;
        break;
    case Sheet::update:
        updateManager_.showUpdateModal = shown;
        break;
    }
    stack();
}

int Sheets::layer(Sheet sheet)
{
    const auto& order = stack();
    const auto place = std::find(order.begin(), order.end(), sheet);
    return place == order.end() ? -1 : static_cast<int>(place - order.begin());
}

bool Sheets::isInFront(Sheet sheet)
{
    return areAny() && stack_.back() == sheet;
}

// The manager raises its sheet by itself; whoever asks for the order finds it on top.
const std::vector<Sheets::Sheet>& Sheets::stack()
{
    std::erase_if(stack_, [this](Sheet sheet) { return !isShown(sheet); });
    for (const auto sheet : {Sheet::settings, Sheet::about, Sheet::intruderGallery, Sheet::update})
        if (isShown(sheet) && std::find(stack_.begin(), stack_.end(), sheet) == stack_.end())
            stack_.push_back(sheet);
    return stack_;
}

} // namespace kestrovan
