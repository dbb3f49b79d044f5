SampleCad model 1
1	0.000	0.000	0.000	25.000	60.000	a0eb96	1	0	0		
