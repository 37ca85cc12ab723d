# The two commands that matter: `make run` and `make test`.
BUILD_DIR ?= build
BUILD_TYPE ?= RelWithDebInfo

.PHONY: all bootstrap configure build run test clean bench

all: build

bootstrap:
	@scripts/bootstrap

configure: bootstrap
	@cmake -S . -B $(BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) >/dev/null

build: configure
	@cmake --build $(BUILD_DIR)

run: build
	@scripts/run

test: build
	@scripts/run-tests

bench: build
	@echo "Benchmarks: $$(ls $(BUILD_DIR)/bench)"

clean:
	@rm -rf $(BUILD_DIR)
