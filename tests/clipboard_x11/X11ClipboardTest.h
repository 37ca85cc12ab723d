#pragma once

int runX11ClipboardTests(int argc, char** argv);
