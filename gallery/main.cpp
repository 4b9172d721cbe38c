// Pictures of all windows of the editor, filled from a document. What it shows is what users
// have: it links the editor's library and its forms.
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/shell/StartOptions.h"
#include "application/Application.h"
#include "core/text/Clock.h"
#include "gallery/Makers.h"
#include "gallery/Pictures.h"
#include "gallery/Screenshots.h"

#include <iostream>
#include <string>
#include <vector>

#include <QApplication>

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (arguments.size() != 3) {
        std::cerr << "usage: kavu-gallery SETTINGS FILE DIR\n\n"
                     "Renders pictures of all windows, filled from the TMATS file FILE, into\n"
                     "DIR. SETTINGS is the settings file that is used.\n";
        return 64;
    }
    QApplication application(argc, argv);
    kavu::keepNumbersPlain();
    kavu::look::apply(application, kavu::look::Scheme::Light);

    kavu::SystemClock clock;
    kavu::SystemRandomSource random;
    kavu::Application system(kavu::Environment::ofProcess(), clock, random, arguments[0]);
    kavu::ScreenshotList list;
    kavu::addAllScreenshots(list);
    return kavu::renderPictures(application, system, list, arguments[2], arguments[1]);
}
