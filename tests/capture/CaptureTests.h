#pragma once

int runCaptureFlowTests(int argc, char** argv);
int runMirrorTests(int argc, char** argv);
