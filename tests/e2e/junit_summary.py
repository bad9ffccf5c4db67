"""junit_summary.py FILE: what a JUnit file says, one line a test case. Fails when it is not built as CIs expect."""
import sys
import xml.etree.ElementTree as ElementTree

root = ElementTree.parse(sys.argv[1]).getroot()
assert root.tag == 'testsuites', root.tag
suites = list(root)
assert [suite.tag for suite in suites] == ['testsuite'], suites
suite = suites[0]
assert set(suite.attrib) == {'name', 'tests', 'failures', 'errors', 'skipped', 'time'}, suite.attrib
assert set(root.attrib) == {'tests', 'failures', 'errors', 'time'}, root.attrib
print('suite', suite.get('name'))
counts = {'passed': 0, 'failure': 0, 'skipped': 0}
for case in suite:
    assert case.tag == 'testcase', case.tag
    assert set(case.attrib) == {'classname', 'name', 'time'}, case.attrib
    assert float(case.get('time')) >= 0
    assert len(case) <= 1, list(case)
    outcome = case[0].tag if len(case) else 'passed'
    counts[outcome] += 1
    print(outcome, case.get('name'), case[0].get('message') if outcome == 'failure' else '', sep=' | ')
assert int(suite.get('tests')) == int(root.get('tests')) == len(suite)
assert int(suite.get('failures')) == int(root.get('failures')) == counts['failure']
assert int(suite.get('skipped')) == counts['skipped']
assert float(suite.get('time')) >= max(float(case.get('time')) for case in suite)
