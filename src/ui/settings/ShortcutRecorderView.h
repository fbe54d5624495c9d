#pragma once

#include "base/NotificationCenter.h"
#include "base/UserDefaults.h"
#include "platform/LocalEvents.h"
#include "services/KeyCombo.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>

/// Shows a stored key combination and records another one: after a click it waits for a key with a modifier,
/// stores that combination and posts a notification. Main thread only.
class ShortcutRecorderView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings")
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(QString displayString READ displayString NOTIFY changed)
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY changed)

public:
    enum class Recording { Begins, Ends };

    struct Purpose {
        QString label;
        QString defaultsKey;      ///< where the combination is stored
        QString notificationName; ///< posted after it has been stored
    };
    /// What happens around it; all of it must outlive it.
    struct Surroundings {
        UserDefaults &defaults;
        NotificationCenter &notifications;
        LocalEvents &events;
        /// So that no hot key takes the combination away.
        std::function<void(Recording)> onRecording;
    };
    ShortcutRecorderView(Purpose purpose, const Surroundings &surroundings);
    /// Ends the recording.
    ~ShortcutRecorderView() override;

    const QString &label() const { return m_purpose.label; }
    const KeyCombo &currentCombo() const { return m_currentCombo; }
    /// The combination, or, while recording, what to do.
    QString displayString() const;
    bool isRecording() const { return m_eventMonitor != nullptr; }

    /// Shows what is stored; stays as it is when that is no combination.
    void loadCombo();
    Q_INVOKABLE void startRecording();
    Q_INVOKABLE void stopRecording();

Q_SIGNALS:
    void changed();

private:
    LocalEventFate keyDown(const LocalKeyEvent &event);
    void saveCombo(const KeyCombo &combo);

    Purpose m_purpose;
    Surroundings m_surroundings;
    KeyCombo m_currentCombo = KeyCombo::standard();
    std::unique_ptr<LocalEvents::Monitor> m_eventMonitor;
};
