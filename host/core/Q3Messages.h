#pragma once

#include "Q3Global.h"

#include <QList>
#include <QString>

#include <deque>
#include <functional>

enum class TQ3MsgIcon { None, Information, Warning, Error, Question };
enum class TQ3MsgButtons { Ok, YesNo, YesNoCancel };
enum class TQ3MsgResult { Ok, Yes, No, Cancel };

struct Q3_EXPORT TQ3Message
{
    QString Title;
    QString Text;
    TQ3MsgIcon Icon = TQ3MsgIcon::None;
    TQ3MsgButtons Buttons = TQ3MsgButtons::Ok;
};

// Whoever answers the application's message boxes: the user through a dialog,
// or a responder that tests and the headless mode install.
class Q3_EXPORT IQ3MessageResponder
{
public:
    virtual ~IQ3MessageResponder() = default;
    virtual TQ3MsgResult Answer(const TQ3Message &message) = 0;
};

// Shows one message box and answers the button pressed.
Q3_EXPORT TQ3MsgResult Q3MessageBox(const QString &title, const QString &text, TQ3MsgIcon icon = TQ3MsgIcon::None,
                                    TQ3MsgButtons buttons = TQ3MsgButtons::Ok);

// The usual shapes.
Q3_EXPORT void Q3ShowError(const QString &text);   // "Errore", error icon
Q3_EXPORT void Q3ShowWarning(const QString &text); // "Attenzione", warning icon
Q3_EXPORT bool Q3AskYesNo(const QString &text);    // "Conferma", question icon

// Shows a box to the user; the host's widget library installs its dialog.
using TQ3MessagePresenter = TQ3MsgResult (*)(const TQ3Message &message);
Q3_EXPORT void SetQ3MessagePresenter(TQ3MessagePresenter presenter);

// Installs a responder, which answers before any presenter; null removes it. Answers the previous one.
Q3_EXPORT IQ3MessageResponder *SetQ3MessageResponder(IQ3MessageResponder *responder);

// Records every box and answers from a queue, then with the box's default
// (OK, or Yes for a question without queued answers).
class Q3_EXPORT TQ3RecordingResponder : public IQ3MessageResponder
{
public:
    TQ3RecordingResponder();
    ~TQ3RecordingResponder() override;

    TQ3MsgResult Answer(const TQ3Message &message) override;

    void Enqueue(TQ3MsgResult result) { m_answers.push_back(result); }
    // Runs once for every box, while it is "open" (before it is answered).
    void SetOnShow(std::function<void(const TQ3Message &)> onShow) { m_onShow = std::move(onShow); }
    const QList<TQ3Message> &Messages() const { return m_messages; }
    // Every box so far as "title: text", joined by the separator (a failure's report).
    QString Testi(const QString &separatore) const;
    void Clear()
    {
        m_messages.clear();
        m_answers.clear();
    }

private:
    IQ3MessageResponder *m_previous = nullptr;
    QList<TQ3Message> m_messages;
    std::deque<TQ3MsgResult> m_answers;
    std::function<void(const TQ3Message &)> m_onShow;
};

// Writes each box to standard error as "title: text" and answers its default.
class Q3_EXPORT TQ3StderrResponder : public IQ3MessageResponder
{
public:
    TQ3MsgResult Answer(const TQ3Message &message) override;
};
