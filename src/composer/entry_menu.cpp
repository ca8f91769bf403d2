#include "composer/entry_menu.h"

#include "composer/melody/entry_settings.h"
#include "core/note_values.h"
#include "platform/user_text.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

namespace {

QAction* addAction(QMenu& menu, const QString& name, const QString& caption,
                   const QList<QKeySequence>& shortcuts) {
    QAction* action = menu.addAction(caption);
    action->setObjectName(name);
    action->setShortcuts(shortcuts);
    action->setAutoRepeat(false);
    return action;
}

/// "Ctrl+1" of the first item, and so on.
QList<QKeySequence> numbered(Qt::KeyboardModifier modifier, std::size_t index) {
    const auto digit = static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(index));
    return {QKeySequence(QKeyCombination(modifier, digit))};
}

}  // namespace

EntryMenu::EntryMenu(QMenuBar& bar) {
    auto& menu = *new QMenu(tr("&Inserimento"), &bar);
    bar.insertMenu(bar.actions().value(2), &menu);

    connect(addAction(menu, QStringLiteral("mnuInsNota"), tr("Nota attiva"),
                      {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)}),
            &QAction::triggered, this, &EntryMenu::noteChosen);
    connect(addAction(menu, QStringLiteral("mnuInsPausa"), tr("Pausa"),
                      {QKeySequence(Qt::SHIFT | Qt::Key_Return),
                       QKeySequence(Qt::SHIFT | Qt::Key_Enter)}),
            &QAction::triggered, this, &EntryMenu::restChosen);
    connect(addAction(menu, QStringLiteral("mnuCanc"), tr("Cancella nota scelta o ultima"),
                      {QKeySequence(Qt::Key_Delete)}),
            &QAction::triggered, this, &EntryMenu::deletionChosen);
    connect(addAction(menu, QStringLiteral("mnuDuplica"), tr("Duplica dalla nota scelta"),
                      {QKeySequence(Qt::CTRL | Qt::Key_D)}),
            &QAction::triggered, this, &EntryMenu::repetitionChosen);
    menu.addSeparator();
    for (std::size_t i = 0; i < note_values::kAll.size(); ++i) {
        connect(
            addAction(menu, QStringLiteral("mnuValore_%1").arg(i),
                      UserText::tr(note_values::kAll[i].name), numbered(Qt::ControlModifier, i)),
            &QAction::triggered, this,
            [this, i] { Q_EMIT symbolChosen(static_cast<std::uint8_t>(i)); });
    }
    menu.addSeparator();
    for (std::size_t i = 0; i < kAttributeButtons.size(); ++i) {
        connect(addAction(menu, QStringLiteral("mnuAttributo_%1").arg(i),
                          UserText::tr(kAttributeButtons[i].toolTip), numbered(Qt::AltModifier, i)),
                &QAction::triggered, this,
                [this, i] { Q_EMIT attributeChosen(static_cast<std::uint8_t>(i)); });
    }
}
