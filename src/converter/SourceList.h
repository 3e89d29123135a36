#pragma once

#include <QListWidget>

/// A list of paths that takes files and folders dropped by other programs.
class SourceList : public QListWidget
{
    Q_OBJECT

public:
    explicit SourceList(QWidget *parent = nullptr);

Q_SIGNALS:
    /// Comes after the drop is over: a receiver may show boxes without holding up the other program.
    void pathsDropped(const QStringList &paths);

protected:
    void paintEvent(QPaintEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
};
