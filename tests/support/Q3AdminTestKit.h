#pragma once

// The administration windows driven as a user does: typing into their
// inputs, clicking their buttons, choosing files in their file dialogs.
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace Q3AdminTest {

inline QLineEdit *Edit(QWidget *window, const char *name)
{
    auto edit = window->findChild<QLineEdit *>(QString::fromLatin1(name));
    if (!edit)
        qFatal("no input %s", name);
    return edit;
}

// Replaces an input's text as typed; letters beyond ASCII come as an input
// method gives them (the test's keys type ASCII only).
inline void Type(QWidget *window, const char *name, const QString &text)
{
    QLineEdit *edit = Edit(window, name);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    bool ascii = true;
    for (const QChar c : text)
        ascii = ascii && c.unicode() < 128;
    if (ascii)
        QTest::keyClicks(edit, text);
    else
        edit->insert(text);
}

inline void Click(QWidget *window, const char *name)
{
    auto button = window->findChild<QPushButton *>(QString::fromLatin1(name));
    QVERIFY(button && button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
}

inline void Choose(QWidget *window, const char *name, const QString &code)
{
    auto combo = window->findChild<QComboBox *>(QString::fromLatin1(name));
    combo->setCurrentIndex(combo->findData(code));
}

// Answers the file dialog the next click opens: the file's path typed in its
// name and Enter pressed.
inline void ChooseFileWhenShown(QObject *owner, const QString &file)
{
    auto timer = new QTimer(owner);
    timer->setInterval(20);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, file] {
        auto dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->stop();
        timer->deleteLater();
        auto name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        name->setText(file);
        QTest::keyClick(name, Qt::Key_Return);
    });
    timer->start();
}

// A picture file of one colour, twice as wide as tall; answers its path.
inline QString LogoFile(const QString &folder, const QColor &colour = QColor(200, 0, 0))
{
    QImage image(QSize(120, 60), QImage::Format_RGB32);
    image.fill(colour);
    const QString file = folder + QStringLiteral("/logo.png");
    image.save(file);
    return file;
}

} // namespace Q3AdminTest
