#pragma once

#include <QElapsedTimer>
#include <QPixmap>
#include <QStringList>
#include <QTimer>
#include <map>

class QWidget;

/// The main job without a person: works the main window through its controls, and answers every box that
/// comes up. UI thread only.
class RipJob : public QObject
{
    Q_OBJECT

public:
    /// Without a picture nothing disturbs the measuring of a job.
    explicit RipJob(QWidget &mainWindow, bool withPicture = true);

    /// How many tracks the list shows; waits for the disc to be read.
    int waitForTracks(int milliseconds = 10000);
    /// Chooses an output format by its place among the option buttons and checks every track.
    void choose(int format);
    /// Opens the tracks editor, types these and confirms; the tracks get the titles that it offers.
    void enterTitles(const QString &album, const QString &artist, const QString &year);
    /// Presses the button that starts the job; returns when the job's window is closed.
    void rip();

    /// The full paths of the files that the checked rows name.
    QStringList files() const;
    /// The texts of the boxes that were answered, in order.
    const QStringList &boxes() const { return m_boxes; }
    /// How long the engine worked on the last job, in seconds.
    double seconds() const { return m_worked / 1e9; }
    /// The job's window with half of its files done; null without a picture.
    const QPixmap &picture() const { return m_picture; }

private:
    void look();

    QWidget &m_window;
    QTimer m_timer;
    QStringList m_boxes;
    std::map<QString, QString> m_typing; ///< what goes into which text box of the tracks editor
    QPixmap m_picture;
    bool m_pictureWanted;
    QElapsedTimer m_clock;
    qint64 m_worked = 0; ///< nanoseconds
};
