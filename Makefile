# The commands of the house. Each one calls a script, cmake or ctest; nothing is decided here.
PRESET := release
BUILD := cmake --preset $(PRESET) && cmake --build --preset $(PRESET)

.PHONY: help run test test-desktops fuzz bench package lint format golden pictures mac mac-check mac-test

help:
	@echo "make run            install what building needs, build, start kelvane or its demo"
	@echo "make test           build and run every test but the matrix of desktops"
	@echo "make test-desktops  build and run the matrix of real desktops"
	@echo "make fuzz           a hundred times the inputs that make test gives the parsers, and go on later"
	@echo "make bench          build and measure, also against other programs"
	@echo "make package        build the Debian package and try it"
	@echo "make lint           floors, format, unlisted tests, wording, installed files, package, clang-tidy"
	@echo "make mac            cross-build Kelvane.app for both processors, check and test what can be here"
	@echo "make mac-check      only check what make mac built"
	@echo "make mac-test       run the portable folders' unit tests with the C++ library of the Mac's build, and the Mac adaptors' own"
	@echo "make format         rewrite the sources in the house format"
	@echo "make pictures       take the pictures of the documents, of real windows too"
	@echo "make golden         write the golden pictures and trees anew; look at them before committing"

run:
	scripts/install-dependencies build
	$(BUILD)
	scripts/run

test:
	scripts/install-dependencies test
	$(BUILD)
	scripts/fuzz --build-only
	scripts/run-tests test

test-desktops:
	scripts/install-dependencies desktops big-desktops
	$(BUILD)
	scripts/run-tests test-desktops

fuzz:
	scripts/install-dependencies test
	scripts/fuzz --runs 2000000 --keep

bench:
	scripts/install-dependencies peers
	$(BUILD)
	build/$(PRESET)/bench/pieces_bench
	bench/run

package:
	scripts/install-dependencies package
	$(BUILD)
	scripts/package

lint:
	scripts/install-dependencies lint
	$(BUILD)
	scripts/lint

pictures:
	scripts/install-dependencies test desktops big-desktops
	$(BUILD)
	scripts/pictures

golden:
	$(BUILD)
	KELVANE_WRITE_GOLDEN=1 build/$(PRESET)/tests/golden/golden_test

mac:
	scripts/install-dependencies mac
	scripts/mac/build
	scripts/mac/test-adaptors
	scripts/mac/check

mac-check:
	scripts/mac/check

mac-test:
	scripts/install-dependencies mac
	scripts/mac/test-portable
	scripts/mac/test-adaptors

format:
	scripts/install-dependencies lint
	scripts/format
