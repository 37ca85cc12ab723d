#pragma once

// The test classes of this program; main runs them in turn.
int runGeometryTests(int argc, char** argv);
int runHoverRuleTests(int argc, char** argv);
int runControllerTests(int argc, char** argv);
int runTriggerTests(int argc, char** argv);
int runDelegateTests(int argc, char** argv);
