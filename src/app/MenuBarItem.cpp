#include "app/MenuBarItem.h"

#include "parts/Symbol.h"

#include <QAction>
#include <QIcon>
#include <QPixmap>

namespace kestrovan {

namespace {

// Trays are light or dark: these show on both.
QColor colourOf(const GuardState& state)
{
    if (state.isAlarmTriggered())
        return {255, 59, 48};
    return state.isArmed() ? QColor(48, 180, 87) : QColor(132, 145, 168);
}

QIcon iconFor(const GuardState& state)
{
    const auto symbol = QString::fromStdString(menuBarSymbol(state));
    QIcon icon;
    for (const int pixels : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(QPixmap::fromImage(Symbol::draw(symbol, colourOf(state), pixels)));
    return icon;
}

// Only a menu that this program draws itself shows it; a panel draws the menu in its own font.
QFont fontOf(MenuEntry::Kind kind, QFont font)
{
    constexpr double caption = 0.9;
    constexpr double footnote = 0.8;
    if (kind == MenuEntry::Kind::headline)
        font.setBold(true);
    if (kind == MenuEntry::Kind::caption || kind == MenuEntry::Kind::footnote)
        font.setPointSizeF(font.pointSizeF() * (kind == MenuEntry::Kind::caption ? caption : footnote));
    return font;
}

QString labelOf(const MenuEntry& entry)
{
    return QString::fromStdString(entry.text).replace('&', "&&");
}

} // namespace

MenuBarItem::MenuBarItem(AppState& appState, MainQueue& mainQueue, const ShellActions& actions)
    : appState_(appState), actions_(actions), follower_(appState, mainQueue, [this] { refresh(); })
{
    menu_.setSeparatorsCollapsible(false);
    makeMenu();
    refresh();
}

void MenuBarItem::show()
{
    icon_ = std::make_unique<QSystemTrayIcon>();
    icon_->setContextMenu(&menu_);
    QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger)
                             actions_.openWindow();
                     });
    refreshIcon();
    icon_->show();
}

void MenuBarItem::makeMenu()
{
    content_ = menuContent(appState_, actions_);
    for (const auto& entry : content_) {
        const auto place = static_cast<std::size_t>(menu_.actions().size()); // what stands there changes
        QAction* action = menu_.addAction(QString());
        action->setSeparator(entry.kind == MenuEntry::Kind::separator);
        action->setFont(fontOf(entry.kind, menu_.font()));
        QObject::connect(action, &QAction::triggered, action, [this, place] { content_[place].press(); });
    }
}

void MenuBarItem::refresh()
{
    content_ = menuContent(appState_, actions_);
    const auto actions = menu_.actions();
    for (std::size_t i = 0; i < content_.size(); ++i) {
        QAction& action = *actions[static_cast<qsizetype>(i)];
        action.setText(labelOf(content_[i]));
        action.setVisible(content_[i].isShown);
        action.setEnabled(content_[i].kind == MenuEntry::Kind::button && content_[i].isEnabled);
    }
    refreshIcon();
}

void MenuBarItem::refreshIcon()
{
    if (!icon_)
        return;
    icon_->setToolTip(QString::fromStdString(content_.front().text));
    const auto symbol = menuBarSymbol(appState_.guardState);
    if (std::exchange(symbol_, symbol) != symbol)
        icon_->setIcon(iconFor(appState_.guardState));
}

} // namespace kestrovan
