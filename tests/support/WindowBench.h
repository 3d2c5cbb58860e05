#pragma once

#include "cardedit/frmEdit.h"
#include "format/dlgFMT.h"
#include "mainwindow/frmMain.h"
#include "platform/SingleInstance.h"
#include "print/frmPrintPage.h"
#include "program/frmProg.h"
#include "program/frmStep.h"
#include "sentence/dlgCaPc.h"
#include "sentence/dlgPcCa.h"
#include "sentence/dlgRecorder.h"
#include "support/GuiFixture.h"
#include "widgets/dlgErrLog.h"
#include "widgets/frmAbout.h"
#include "widgets/frmPjName.h"
#include "widgets/frmSetPath.h"

#include <QTest>

#include <functional>
#include <memory>
#include <vector>

using WindowMaker = std::function<QWidget *()>;
Q_DECLARE_METATYPE(WindowMaker)

/// Every window of the program, opened the way an operator reaches it, over a fresh fixture: what
/// the tests that walk all windows (screen readers, languages, pixel densities) share.
class WindowBench
{
public:
    std::unique_ptr<GuiFixture> f;
    std::unique_ptr<SingleInstance> instance;
    std::unique_ptr<frmMain> main;
    std::vector<std::unique_ptr<QWidget>> dialogs;
    bool showMain = false;

    void openBench()
    {
        f = std::make_unique<GuiFixture>();
        f->msgBox.answerOkBoxes = true;
    }
    void closeWindows()
    {
        dialogs.clear();
        if (main) {
            f->msgBox.script({MsgBox::Answer::Ok, MsgBox::Answer::Ok});
            main->close();
        }
        main.reset();
        instance.reset();
    }

    frmMain *startMain()
    {
        instance = std::make_unique<SingleInstance>();
        main = std::make_unique<frmMain>(f->context);
        if (!main->MDIForm_Load(*instance))
            qFatal("main window did not start");
        if (showMain)
            main->show();
        return main.get();
    }
    frmEdit *startProject()
    {
        startMain()->mnuNew_Click();
        return main->editWindow();
    }
    frmProg *openProgram()
    {
        frmEdit *edit = startProject();
        edit->cmdTPrgNo_Click();
        return qobject_cast<frmProg *>(edit->programWindows().ProgramWindows[1].data());
    }
    template<typename T>
    QWidget *dialog(std::unique_ptr<T> made)
    {
        made->show();
        dialogs.push_back(std::move(made));
        return dialogs.back().get();
    }

    /// One data row per window; `row` starts a row by the window's name.
    void addWindowRows(const std::function<QTestData &(const char *)> &row)
    {
        row("frmMain") << WindowMaker([this] { return static_cast<QWidget *>(startMain()); });
        row("frmEdit") << WindowMaker([this] { return static_cast<QWidget *>(startProject()); });
        row("frmProg") << WindowMaker([this] { return static_cast<QWidget *>(openProgram()); });
        row("frmStep") << WindowMaker([this] {
            frmProg *program = openProgram();
            program->cmdProgStep_Click();
            return static_cast<QWidget *>(program->stepWindow());
        });
        row("dlgPcCa") << WindowMaker(
            [this] { return dialog(std::make_unique<dlgPcCa>(f->context, nullptr)); });
        row("dlgRecorder") << WindowMaker([this] {
            return dialog(std::make_unique<dlgRecorder>(
                f->context, 3, QStringList(), f->home.filePath(QStringLiteral("SoundTmp/take.wav")),
                [](const QString &, const QString &) { return false; }, nullptr));
        });
        row("dlgCaPc") << WindowMaker(
            [this] { return dialog(std::make_unique<dlgCaPc>(f->context, nullptr)); });
        row("dlgFMT") << WindowMaker([this] {
            auto format = std::make_unique<dlgFMT>(f->context, nullptr);
            format->adjustSize(); // shown, it would start formatting
            dialogs.push_back(std::move(format));
            return dialogs.back().get();
        });
        row("frmPjName") << WindowMaker(
            [this] { return dialog(std::make_unique<frmPjName>(f->context, nullptr)); });
        row("frmSetPath") << WindowMaker(
            [this] { return dialog(std::make_unique<frmSetPath>(f->home.path(), nullptr)); });
        row("print dialog") << WindowMaker([this] {
            return dialog(std::make_unique<frmPrintPage>(f->context, PrintKind::AllSettingData, 1, nullptr));
        });
        row("about box") << WindowMaker([this] {
            return dialog(
                std::make_unique<frmAbout>(f->msgBox, nullptr, QStringLiteral("/usr/bin/hardinfo")));
        });
        row("error list") << WindowMaker([this] {
            f->state->SettingBuffer.SentenceFileName[0] = QStringLiteral("GONE.MP2");
            f->state->Setting.SentenceFileName[0] = QStringLiteral("GONE.MP2");
            return dialog(std::make_unique<dlgErrLog>(*f->state, nullptr));
        });
    }
};
