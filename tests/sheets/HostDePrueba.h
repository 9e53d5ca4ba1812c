#pragma once

#include <QString>
#include <deque>
#include <functional>
#include <vector>

#include "platform/forms/Host.h"

/// A host without windows: keeps the boxes that were shown and answers them as the test has laid out.
class HostDePrueba : public tarmel::forms::Host {
 public:
    HostDePrueba() { tarmel::forms::setHost(this); }
    ~HostDePrueba() override { tarmel::forms::setHost(nullptr); }

    std::vector<tarmel::forms::MessageBox> cajas;
    std::deque<int> respuestas;  ///< of the boxes to come; without one a box takes its default button
    QString carpeta;             ///< the application folder
    /// Reports that were shown, each closed at once.
    std::vector<std::shared_ptr<tarmel::report::Document>> informes;
    std::function<void()> alCederEventos;
    std::function<bool()> enPausa;  ///< what the program wants to do while its user pauses

    /// Texts of the boxes shown since the last call, joined by "|".
    QString textosDeCajas() {
        QStringList textos;
        for (const auto& caja : cajas)
            textos << caja.text;
        cajas.clear();
        return textos.join(u'|');
    }

    int ShowBox(const tarmel::forms::MessageBox& caja) override {
        namespace box = tarmel::forms::box;
        cajas.push_back(caja);
        if (!respuestas.empty()) {
            const int respuesta = respuestas.front();
            respuestas.pop_front();
            return respuesta;
        }
        const bool segundo = (caja.buttons & box::DefaultButton2) != 0;
        if ((caja.buttons & box::YesNo) != 0) return segundo ? box::AnswerNo : box::AnswerYes;
        return (caja.buttons & box::OKCancel) != 0 && segundo ? box::AnswerCancel : box::AnswerOK;
    }
    void DoEvents() override {
        if (alCederEventos) alCederEventos();
    }
    void FormShown(tarmel::forms::Form&) override {}
    void FormHidden(tarmel::forms::Form&) override {}
    void FormUnloaded(tarmel::forms::Form&) override {}
    void FormActivated(tarmel::forms::Form&) override {}
    void RunModal(tarmel::forms::Form&) override {}
    void SetPointer(tarmel::forms::Pointer) override {}
    void Sleep(int) override {}
    void WhenIdle(std::function<bool()> trabajo) override { enPausa = std::move(trabajo); }
    std::optional<QString> OpenFileDialogue(const tarmel::forms::FileDialogue&) override {
        return std::nullopt;
    }
    void ShowReport(const std::shared_ptr<tarmel::report::Document>& informe,
                    tarmel::forms::Modality) override {
        informes.push_back(informe);
    }
    void ShowHelp(const QString&) override {}
    void ShowDateTimeSettings() override {}
    QString ApplicationPath() const override { return carpeta; }
    bool PreviousInstance() const override { return false; }
    void EndProgram() override { throw tarmel::forms::ProgramEnd{}; }
};
