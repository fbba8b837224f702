// SPDX-License-Identifier: Apache-2.0
#include "support/ShownViewer.h"

#include <KVGamutView.h>

#include <cstdio>

// Shows a viewer with the ab plane, seen from above, writes the picture to the file that its argument names,
// and prints the drawing problem of the view. The viewer looks for its own files relative to the program's
// binary, so a test copies this program to a temporary folder and runs it there.
int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    kvtest::ShownViewer shown;
    KVGamutView view(&shown.viewer);
    if (const auto problem = view.drawingProblem())
        std::printf("%s\n", qPrintable(problem->text()));
    shown.viewer.setabPlane(true);
    shown.viewer.resetCamera(KVGamut3DViewer::Top, 0);
    return shown.settledPicture().save(application.arguments().value(1), "PNG") ? 0 : 1;
}
