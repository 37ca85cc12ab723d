#pragma once

// The test classes of this program; main runs them in turn.
int runTextRuleTests(int argc, char** argv);
int runRootViewTests(int argc, char** argv);
int runSettingsPaneTests(int argc, char** argv);
int runOnboardingPaneTests(int argc, char** argv);
int runActivityTests(int argc, char** argv);
int runWorkspacesPageTests(int argc, char** argv);
