#include "widgets/ProjectCommands.h"

#include "setting/MsgBox.h"
#include "setting/ProjectFile.h"
#include "setting/SharedState.h"
#include "widgets/FileDialogs.h"

ProjectCommands::ProjectCommands(AppContext &context, QWidget *dialogParent)
    : m_context(context)
    , m_dialogParent(dialogParent)
{ }

void ProjectCommands::NewSettingFile()
{
    m_context.state.NewSetting();
    emit fileDisplaysChanged();
}

bool ProjectCommands::OpenProject()
{
    // A card's file system may spell the control file in either case.
    const QString path = m_context.fileDialogs.openFileName(
        m_dialogParent, tr("Open"),
        QStringLiteral("*.stf (*.stf);;DQ480.csv (DQ480.csv DQ480.CSV dq480.csv)"));
    if (path.isEmpty())
        return false;
    return OpenProjectFile(path);
}

bool ProjectCommands::OpenProjectFile(const QString &path)
{
    QString error;
    const LoadOutcome outcome = loadProject(m_context.state, path, error);
    if (outcome == LoadOutcome::Rejected)
        m_context.msgBox.show(tr("Setting file error!")
                              + (error.isEmpty() ? QString() : QStringLiteral("\r\n") + error));
    else if (outcome == LoadOutcome::Unreadable || outcome == LoadOutcome::WrongCodePage)
        m_context.msgBox.show(error, MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
    else
        m_context.state.CurrentFilePath = path;
    emit fileDisplaysChanged();
    return outcome == LoadOutcome::Read;
}

bool ProjectCommands::SaveProject()
{
    if (saveNeedsNewName(m_context.state))
        return SaveProjectAs();
    return SaveProjectTo(m_context.state.ProjectFilePath);
}

bool ProjectCommands::SaveProjectAs()
{
    const QString path = m_context.fileDialogs.saveFileName(
        m_dialogParent, tr("Save as"), QStringLiteral("*.stf (*.stf)"), QStringLiteral("stf"));
    if (path.isEmpty() || !SaveProjectTo(path))
        return false;
    m_context.state.ProjectFilePath = path;
    emit captionChanged(tr("DQ-480 Setting Software : ") + path);
    return true;
}

bool ProjectCommands::SaveProjectTo(const QString &path)
{
    QString error;
    if (!::SaveProjectTo(m_context.state, path, error)) {
        m_context.msgBox.show(tr("The setting file was not saved.\n") + error, MsgBox::Buttons::Ok,
                              MsgBox::Icon::Critical);
        return false;
    }
    emit fileDisplaysChanged();
    return true;
}
