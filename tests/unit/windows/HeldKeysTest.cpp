#include "platform/windows/HeldKeys.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethodQueryEvent>
#include <QTest>
#include <QWindow>
#include <gmock/gmock.h>

namespace tarnwick::windows {
namespace {

/// Counts the presses that reach it; may be one that texts are written into.
class Listener : public QWindow {
public:
    int presses = 0;
    int overrides = 0;
    bool takesText = false;

protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride)
            ++overrides;
        if (event->type() == QEvent::InputMethodQuery) {
            static_cast<QInputMethodQueryEvent*>(event)->setValue(Qt::ImEnabled, takesText);
            return true;
        }
        return QWindow::event(event);
    }
    void keyPressEvent(QKeyEvent*) override { ++presses; }
};

class HeldKeysTest : public testing::Test {
protected:
    void SetUp() override {
        for (Listener* each : {&window, &other})
            each->show();
        window.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    /// As the desktop delivers a press: it asks first whether it may be a shortcut. Whether it may.
    bool press(QWindow& to, int key, quint64 time, bool isFlagged = false,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) {
        QKeyEvent asked(QEvent::ShortcutOverride, key, modifiers, 0, 0, 0, text, isFlagged);
        asked.setTimestamp(time);
        asked.ignore();
        QCoreApplication::sendEvent(&to, &asked);
        QKeyEvent pressed(QEvent::KeyPress, key, modifiers, 0, 0, 0, text, isFlagged);
        pressed.setTimestamp(time);
        QCoreApplication::sendEvent(&to, &pressed);
        return !asked.isAccepted();
    }
    void release(QWindow& from, int key, quint64 time) {
        QKeyEvent released(QEvent::KeyRelease, key, Qt::NoModifier);
        released.setTimestamp(time);
        QCoreApplication::sendEvent(&from, &released);
    }

    Listener window;
    Listener other;
    HeldKeys held;
};

TEST_F(HeldKeysTest, AHeldKeyIsOnePressWhateverQtSaysOfIt) {
    for (const bool isFlagged : {false, true}) {
        window.presses = 0;
        EXPECT_TRUE(press(window, Qt::Key_Right, 1000));
        for (const quint64 time : {1500, 1540, 1580}) {
            release(window, Qt::Key_Right, time);
            EXPECT_FALSE(press(window, Qt::Key_Right, time, isFlagged)) << "it would be a shortcut again";
        }
        EXPECT_EQ(window.presses, 1);
        release(window, Qt::Key_Right, 1600);
        EXPECT_TRUE(press(window, Qt::Key_Right, 1601)) << "pressed anew";
        EXPECT_EQ(window.presses, 2);
        release(window, Qt::Key_Right, 1700);
    }
}

TEST_F(HeldKeysTest, ItIsTheSamePressInTheNextWindow) {
    press(window, Qt::Key_Escape, 1000);
    release(window, Qt::Key_Escape, 1500);
    press(other, Qt::Key_Escape, 1500);
    EXPECT_EQ(other.presses, 0);
}

TEST_F(HeldKeysTest, ADifferentKeyAtTheSameTimeIsAPress) {
    press(window, Qt::Key_Escape, 1000);
    release(window, Qt::Key_Escape, 1500);
    press(window, Qt::Key_Return, 1500);
    EXPECT_EQ(window.presses, 2);
}

TEST_F(HeldKeysTest, WhatMovesAndWhatIsTypedRepeats) {
    struct {
        int key;
        const char* text;
        Qt::KeyboardModifiers modifiers;
        bool always, inText;
    } const rows[] = {
        {Qt::Key_Down, "", {}, true, true},
        {Qt::Key_Up, "", {}, true, true},
        {Qt::Key_PageUp, "", {}, true, true},
        {Qt::Key_Tab, "\t", {}, true, true},
        {Qt::Key_A, "a", {}, false, true},
        {Qt::Key_Backspace, "\b", {}, false, true},
        {Qt::Key_Right, "", {}, false, true},
        {Qt::Key_Return, "\r", {}, false, false},
        {Qt::Key_Escape, "\x1b", {}, false, false},
        {Qt::Key_F11, "", {}, false, false},
        {Qt::Key_S, "s", Qt::ControlModifier, false, false},
    };
    quint64 time = 1000;
    for (const auto& row : rows)
        for (const bool takesText : {false, true}) {
            window.takesText = takesText;
            window.presses = 0;
            time += 1000;
            press(window, row.key, time, false, row.modifiers, row.text);
            release(window, row.key, time + 500);
            press(window, row.key, time + 500, false, row.modifiers, row.text);
            EXPECT_EQ(window.presses == 2, takesText ? row.inText : row.always)
                << std::hex << row.key << takesText;
        }
}

} // namespace
} // namespace tarnwick::windows
