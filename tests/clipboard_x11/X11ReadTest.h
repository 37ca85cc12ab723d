#pragma once

int runX11ReadTests(int argc, char** argv);
