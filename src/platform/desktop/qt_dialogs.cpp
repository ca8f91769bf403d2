#include "platform/desktop/qt_dialogs.h"

#include "platform/desktop/held_input.h"
#include "platform/runtime.h"
#include "platform/user_text.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QStandardPaths>

#include <algorithm>

namespace {

/// Not set as the application's display name, which the toolkit adds to every window's own title.
const QString kDefaultTitle = QStringLiteral("Cantavista");

constexpr int kInputWidth = 360;
constexpr QSize kFileBoxSize(800, 480);

/// Every box is shown by this.
int run(QDialog& box, HeldInput& input) {
    const HeldInput::Box onShow(input);
    return box.exec();
}

/// Escape, the window's own closing button and the end of the program mean `usual`.
QMessageBox::StandardButton show(const Runtime& runtime, HeldInput& input, const QString& text,
                                 QMessageBox::Icon icon, QMessageBox::StandardButtons buttons,
                                 QMessageBox::StandardButton usual) {
    if (runtime.ending())
        return usual;
    QMessageBox box(QtDialogs::windowInFront());
    box.setIcon(icon);
    box.setWindowTitle(kDefaultTitle);
    box.setTextFormat(Qt::PlainText);
    box.setText(QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
    box.setStandardButtons(buttons);
    // Without a letter of its own it would leave "S" to "Sì", which throws away what is not saved.
    if (QAbstractButton* save = box.button(QMessageBox::Save))
        save->setText(UserText::tr("Sal&va"));
    box.setDefaultButton(usual);
    box.setEscapeButton(usual);
    const int answer = run(box, input);
    return runtime.ending() ? usual : static_cast<QMessageBox::StandardButton>(answer);
}

}  // namespace

QWidget* QtDialogs::windowInFront() {
    QWidget* modal = QApplication::activeModalWidget();
    return modal ? modal : QApplication::activeWindow();
}

void QtDialogs::message(const QString& text) {
    show(runtime_, heldInput_, text, QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok);
}

bool QtDialogs::confirm(const QString& text) {
    return show(runtime_, heldInput_, text, QMessageBox::Question,
                QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

bool QtDialogs::offer(const QString& text) {
    return show(runtime_, heldInput_, text, QMessageBox::Question,
                QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes) == QMessageBox::Yes;
}

Closing QtDialogs::confirmClosing(const QString& text) {
    switch (show(runtime_, heldInput_, text, QMessageBox::Question,
                 QMessageBox::Yes | QMessageBox::No | QMessageBox::Save, QMessageBox::No)) {
        case QMessageBox::Yes:
            return Closing::Discard;
        case QMessageBox::Save:
            return Closing::Save;
        default:
            return Closing::Stay;
    }
}

QString QtDialogs::input(const QString& prompt, const QString& title, const QString& proposed) {
    if (runtime_.ending())
        return {};
    QInputDialog box(windowInFront());
    box.setWindowTitle(title.isEmpty() ? kDefaultTitle : title);
    box.setLabelText(prompt);
    box.setTextValue(proposed);
    box.resize(std::max(kInputWidth, box.sizeHint().width()), box.sizeHint().height());
    return run(box, heldInput_) == QDialog::Accepted ? box.textValue() : QString();
}

const QString& QtDialogs::lastFolder() {
    if (!QFileInfo(lastFolder_).isDir())
        lastFolder_ = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    if (!QFileInfo(lastFolder_).isDir())
        lastFolder_ = QDir::homePath();
    return lastFolder_;
}

QString QtDialogs::fileOf(QFileDialog& box) {
    box.resize(kFileBoxSize);
    if (run(box, heldInput_) != QDialog::Accepted || box.selectedFiles().isEmpty())
        return {};
    QString path = box.selectedFiles().constFirst();
    lastFolder_ = QFileInfo(path).path();
    return path.replace(QLatin1Char('/'), QLatin1Char('\\'));
}

QString QtDialogs::saveFile(const QString& title, const QString& proposed, const FileKind& kind) {
    if (runtime_.ending())
        return {};
    QFileDialog box(windowInFront(), title, lastFolder(),
                    QStringLiteral("%1 (*.%2)").arg(kind.name, kind.suffix));
    box.setAcceptMode(QFileDialog::AcceptSave);
    box.setDefaultSuffix(kind.suffix);
    box.selectFile(proposed + QLatin1Char('.') + kind.suffix);
    return fileOf(box);
}

QString QtDialogs::openFile(const QString& title, const QString& kind,
                            const QStringList& suffixes) {
    if (runtime_.ending())
        return {};
    const QString patterns = QStringLiteral("*.") + suffixes.join(QStringLiteral(" *."));
    QFileDialog box(windowInFront(), title, lastFolder(),
                    QStringLiteral("%1 (%2)").arg(kind, patterns));
    box.setFileMode(QFileDialog::ExistingFile);
    return fileOf(box);
}
