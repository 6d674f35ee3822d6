#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>

#include <gtest/gtest.h>

namespace EditorTestSupport {

// Runs `act` on the modal window once it is up (the page runs in its own
// event loop, so the test has to reach it from a timer).
inline void whenModal(std::function<void(QWidget*)> act)
{
    auto* timer = new QTimer;
    timer->setInterval(20);
    auto elapsed = std::make_shared<QElapsedTimer>();
    elapsed->start();
    QObject::connect(timer, &QTimer::timeout, [timer, act, elapsed] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal && elapsed->elapsed() < 10000)
            return;
        timer->stop();
        timer->deleteLater();
        act(modal);
    });
    timer->start();
}

// Every visible caption, button and radio/check box text under `root` fits
// its widget: nothing is cut off.
inline void expectNothingClipped(QWidget& root, const std::string& where)
{
    SCOPED_TRACE(where);
    for (QLabel* label : root.findChildren<QLabel*>()) {
        if (!label->isVisibleTo(&root) || label->text().isEmpty())
            continue;
        SCOPED_TRACE(label->text().toStdString());
        if (label->wordWrap())
            EXPECT_LE(label->heightForWidth(label->width()), label->height() + 1);
        else
            EXPECT_LE(label->sizeHint().width(), label->width() + 1);
    }
    for (QAbstractButton* button : root.findChildren<QAbstractButton*>()) {
        if (!button->isVisibleTo(&root) || button->text().isEmpty())
            continue;
        SCOPED_TRACE(button->text().toStdString());
        EXPECT_LE(button->sizeHint().width(), button->width() + 1);
    }
}

} // namespace EditorTestSupport
