#include "Q3Messages.h"

#include <cstdio>

namespace {

IQ3MessageResponder *currentResponder = nullptr;
TQ3MessagePresenter currentPresenter = nullptr;

TQ3MsgResult DefaultAnswer(const TQ3Message &message)
{
    return message.Buttons == TQ3MsgButtons::Ok ? TQ3MsgResult::Ok : TQ3MsgResult::Yes;
}

} // namespace

TQ3MsgResult Q3MessageBox(const QString &title, const QString &text, TQ3MsgIcon icon, TQ3MsgButtons buttons)
{
    const TQ3Message message{title, text, icon, buttons};
    if (currentResponder)
        return currentResponder->Answer(message);
    if (currentPresenter)
        return currentPresenter(message);
    return TQ3StderrResponder().Answer(message);
}

void Q3ShowError(const QString &text)
{
    Q3MessageBox(QStringLiteral("Errore"), text, TQ3MsgIcon::Error);
}

void Q3ShowWarning(const QString &text)
{
    Q3MessageBox(QStringLiteral("Attenzione"), text, TQ3MsgIcon::Warning);
}

bool Q3AskYesNo(const QString &text)
{
    return Q3MessageBox(QStringLiteral("Conferma"), text, TQ3MsgIcon::Question, TQ3MsgButtons::YesNo)
           == TQ3MsgResult::Yes;
}

void SetQ3MessagePresenter(TQ3MessagePresenter presenter)
{
    currentPresenter = presenter;
}

IQ3MessageResponder *SetQ3MessageResponder(IQ3MessageResponder *responder)
{
    IQ3MessageResponder *previous = currentResponder;
    currentResponder = responder;
    return previous;
}

TQ3RecordingResponder::TQ3RecordingResponder() : m_previous(SetQ3MessageResponder(this)) {}

TQ3RecordingResponder::~TQ3RecordingResponder()
{
    SetQ3MessageResponder(m_previous);
}

QString TQ3RecordingResponder::Testi(const QString &separatore) const
{
    QStringList testi;
    for (const TQ3Message &box : m_messages)
        testi << box.Title + QStringLiteral(": ") + box.Text;
    return testi.join(separatore);
}

TQ3MsgResult TQ3RecordingResponder::Answer(const TQ3Message &message)
{
    m_messages.append(message);
    if (m_onShow)
        m_onShow(message);
    if (m_answers.empty())
        return DefaultAnswer(message);
    const TQ3MsgResult result = m_answers.front();
    m_answers.pop_front();
    return result;
}

TQ3MsgResult TQ3StderrResponder::Answer(const TQ3Message &message)
{
    std::fprintf(stderr, "%s: %s\n", message.Title.toLocal8Bit().constData(), message.Text.toLocal8Bit().constData());
    std::fflush(stderr);
    return DefaultAnswer(message);
}
