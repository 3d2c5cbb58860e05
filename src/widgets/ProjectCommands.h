#pragma once

#include "widgets/AppContext.h"

#include <QObject>
#include <QString>

class QWidget;

/// File > New, Open, Save and Save As with their dialogs and messages. The main window and the card
/// edit window share one instance.
class ProjectCommands : public QObject
{
    Q_OBJECT

public:
    ProjectCommands(AppContext &context, QWidget *dialogParent);

    /// Resets everything to a new project.
    void NewSettingFile();

    /// Asks for a setting file or card control file and reads it. True when a project was read;
    /// false when the operator cancelled or the file was refused (after saying why).
    bool OpenProject();
    /// Reads the given setting file or card control file with the same checks and messages as
    /// OpenProject(): the file a desktop or a command line hands to the program.
    bool OpenProjectFile(const QString &path);

    /// Saves to the project's file, or through Save As when it has no ".stf" name yet.
    bool SaveProject();
    bool SaveProjectAs();
    /// Writes the setting file; a failure is reported and leaves the project unsaved.
    bool SaveProjectTo(const QString &path);

signals:
    /// The project's file name or folder changed: the displays show them again.
    void fileDisplaysChanged();
    /// The main window's caption after Save As.
    void captionChanged(const QString &caption);

private:
    AppContext &m_context;
    QWidget *m_dialogParent;
};
