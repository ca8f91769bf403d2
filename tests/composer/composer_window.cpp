#include "composer/composer_window.h"

#include "composer/staff/composer_staff.h"
#include "widgets/piano_keyboard.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>

#include <optional>
#include <utility>

using namespace std::chrono_literals;

QString itemsOf(const QListWidget& list, const QString& selected) {
    QStringList items;
    for (int row = 0; row < list.count(); ++row) {
        const QListWidgetItem& item = *list.item(row);
        items << QString((item.isSelected() ? selected : QString()) + item.text()).remove(u' ');
    }
    return items.join(u'|');
}

std::unique_ptr<WaveRendering> SlowRenderer::start(std::vector<TimedMessage>, std::int64_t) {
    struct Slow : WaveRendering {
        explicit Slow(VirtualRuntime& slowed) : runtime(slowed) {}
        const Frames& next() override {
            runtime.advance(1s);
            frames = left-- > 0 ? Frames{1, -1, 2, -2} : Frames{};
            return frames;
        }
        VirtualRuntime& runtime;
        Frames frames;
        int left = 4;
    };
    return std::make_unique<Slow>(runtime_);
}

Services OpenComposer::services() {
    world.openOutput();
    Services all = world.services();
    all.waveRenderer = &renderer;
    all.printing = &printing;
    return all;
}

/// The window's opening takes the first act and the next one in a single pass.
OpenComposer::OpenComposer(const QString& melodyFile)
    : window(services(), state, nullptr, melodyFile) {
    world.plugKeyboard();
    at(1ms, [] {});
}

void OpenComposer::putMelodies() {
    world.folders.put(root + "Due.mel",
                      "60;62;64;00;\r\n1;0,5;1,5;1;\r\nn;s;t;p;\r\n 120 \r\n 73 \r\n"
                      "1 \xF7 4 \xF7 Tutto;2 \xF7 3 \xF7 a;3 \xF7 3 \xF7 b;\r\n");
    world.folders.put(root + "Rotta.mel",
                      "60;62;\r\n1;\r\nn;n;\r\n60\r\n16\r\n1 \xF7 2 \xF7 x;\r\n");
    world.folders.put(root + "Mie\\Tre.mel", "72;\r\n1;\r\nn;\r\n");
    world.folders.put("A:\\Sette.mel", "79;\r\n1;\r\nn;\r\n");
    world.folders.put("C:\\Musica\\x");
    for (const char* part : {"", "<chord/>"}) {
        world.folders.put(QStringLiteral("C:\\Musica\\Otto%1.musicxml").arg(*part ? "2" : ""),
                          QByteArray("<score-partwise><part id='a'><measure number='1'><note>") +
                              part +
                              "<pitch><step>G</step><octave>4</octave></pitch><duration>1"
                              "</duration><lyric/></note></measure></part></score-partwise>");
    }
}

void OpenComposer::at(Instant instant, std::function<void()> act) {
    world.runtime.at(instant, std::move(act));
}

void OpenComposer::clickAt(Instant instant, const char* control) {
    at(instant, [this, control] { user.click(control); });
}

void OpenComposer::runUntil(Instant end) {
    at(end, [this] {
        world.dialogs.confirmations = {true};
        window.reject();
    });
    window.exec();
    EXPECT_FALSE(window.isVisible());
}

void OpenComposer::enter(const std::vector<int>& notes) {
    for (const int note : notes) {
        user.click(QStringLiteral("lb_%1").arg(note - 36));
        user.click("cmdInsNota");
    }
    world.midi.take();
}

void OpenComposer::step(const QString& what) {
    const QString value = what.section(u'=', 1);
    const QString name = what.section(u'=', 0, 0).remove(u'*');
    auto* control = window.findChild<QWidget*>(name);
    auto* list = qobject_cast<QListWidget*>(control);
    if (name == QStringLiteral("in")) {
        world.dialogs.inputs.push_back(value);
    } else if (what == QStringLiteral("yes") || what == QStringLiteral("no")) {
        world.dialogs.confirmations.push_back(what == QStringLiteral("yes"));
    } else if (name.startsWith(QStringLiteral("midi_"))) {
        for (const bool down : {true, false})
            world.key(name.mid(5).toInt(), down);
    } else if (name == QStringLiteral("pedal")) {
        for (const std::uint32_t message : {0x7F40B0U, 0x0040B0U})
            world.midiIn.send(1, message, world.runtime.now());
    } else if (window.findChild<QAction*>(name)) {
        user.trigger(name);
    } else if (list && what.endsWith(u'*')) {
        const QPointF place = list->visualItemRect(list->currentItem()).center();
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease})
            sendMouse(*list->viewport(), type, place);
    } else if (list) {
        list->setFocus();
        list->setCurrentRow(value.toInt());
    } else if (auto* staff = qobject_cast<ComposerStaff*>(control)) {
        Q_EMIT staff->entryChosen(value.toInt());
    } else if (qobject_cast<PianoKeyboard*>(control)) {
        control->setFocus();
    } else if (auto* slider = qobject_cast<QAbstractSlider*>(control)) {
        slider->setValue(value.toInt());
    } else if (auto* box = qobject_cast<QComboBox*>(control)) {
        box->setCurrentText(value);
    } else if (auto* edit = qobject_cast<QLineEdit*>(control)) {
        edit->setFocus();
        edit->setText(value);
        user.type(Qt::Key_Return, QStringLiteral("\r"));
    } else if (name.startsWith(QStringLiteral("lblid_"))) {
        const QPointF middle = control->rect().center();
        at(world.runtime.now() + 150ms,
           [=] { sendMouse(*control, QEvent::MouseButtonRelease, middle); });
        sendMouse(*control, QEvent::MouseButtonPress, middle);
    } else if (control) {
        what.endsWith(u'*') ? user.doubleClick(name) : user.click(name);
    } else {
        const QKeySequence keys(what);
        ASSERT_FALSE(keys.isEmpty()) << what.toStdString();
        user.type(keys[0].key(), {}, keys[0].keyboardModifiers());
    }
}

OpenComposer::Look OpenComposer::look() {
    Look look;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        if (name.isEmpty() || name.startsWith(QStringLiteral("qt_")))
            continue;
        const bool isFrame = qobject_cast<const QGroupBox*>(widget) || name == "lblGuida";
        QString seen = isFrame ? QString() : user.text(name);
        if (const auto* list = qobject_cast<const QListWidget*>(widget))
            seen = itemsOf(*list, QStringLiteral("*"));
        if (name == QStringLiteral("Regolo"))
            seen = widget->accessibleDescription().section(QStringLiteral("; "), 1);
        seen += widget->property("checked").toBool() ? " on" : "";
        seen += widget->isEnabledTo(widget->parentWidget()) ? "" : " off";
        look[name] = seen + (widget->isHidden() ? " hidden" : "");
    }
    for (const QAction* action : window.findChildren<QAction*>())
        look[action->objectName()] = action->isEnabled() ? "on" : "off";
    for (int key = 0; key < PianoKeyboard::kKeys; ++key)
        look["marked"] += user.find<PianoKeyboard>("lb").marked(key) ? QString::number(key) : "";
    look["focus"] = window.focusWidget() ? window.focusWidget()->objectName() : QString();
    for (const QString& folder : {root, root + "Mie\\", QString("A:\\"), QString("C:\\Musica\\")}) {
        for (const QString& file : world.folders.files(folder, QStringLiteral("*"))) {
            const qsizetype shown = file.endsWith(QStringLiteral(".mel")) ? 24 : 4;
            look[folder + file] = QString::fromLatin1(world.folders.at(folder + file).left(shown))
                                      .replace(u'\n', u'/')
                                      .remove(u'\r');
        }
    }
    return look;
}

std::string OpenComposer::effectOf(const QString& steps) {
    Look before = look();
    std::optional<Look> during;
    world.midi.take();
    world.dialogs.lines.clear();
    heard.take();
    QStringList effects;
    for (const QString& one : steps.split(u' ')) {
        if (one == QStringLiteral("…"))
            at(world.runtime.now() + 100ms, [&] { during = look(); });
        else if (one == QStringLiteral("said"))
            effects << heard.take();
        else
            step(one);
    }
    const Look after = during ? *during : look();
    for (const auto& [name, seen] : after) {
        if (before[name] != seen)
            effects << name + u'=' + seen;
    }
    for (const auto& lines : {world.midi.takeUntimed(), world.dialogs.lines}) {
        for (const std::string& line : lines)
            effects << QString::fromStdString(line);
    }
    QString everyOff = QStringLiteral("on 1 36 0");
    for (int note = 37; note <= 95; ++note)
        everyOff += QStringLiteral("; on 1 %1 0").arg(note);
    return effects.join(QStringLiteral("; "))
        .replace(everyOff, QStringLiteral("all off"))
        .replace(u'\n', u'/')
        .toStdString();
}
